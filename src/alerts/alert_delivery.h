#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "settings/stored_choices.h"
#include "ui/question_queue.h"

namespace pallomir {

/// Letters before the last "@", and a last "." that stands neither before nor right behind it.
bool IsEmailAddress(std::string_view text);
/// Ten digits.
bool IsPhoneNumber(std::string_view text);

/// Where alerts are to be sent to, by mail or as text message. It is asked, kept and shown; sending is left
/// to whoever reads the settings.
class AlertDelivery {
 public:
  /// All arguments outlive this object.
  AlertDelivery(AlertChoices& choices, ProviderChoices& provider, QuestionQueue& questions);

  /// What the menus show is another one now.
  std::function<void()> changed = [] {};

  void AskEmail();
  void AskPhone();
  /// The carrier's place, or the entry that asks for one of the user's own.
  void ChooseCarrier(int index);

  /// "Email Me At: …", "Text Me At: …" or that nothing is configured; as a menu's caption, with access key.
  std::string Caption() const;
  /// The place of the chosen carrier.
  int CarrierIndex() const;

  struct Gateway {
    std::string name;
    std::string domain;
  };
  /// The chosen carrier's.
  Gateway ChosenGateway() const;
  /// That of the user's own carrier; empty name where there is none.
  Gateway CustomGateway() const;

 private:
  std::string TextAddress() const;
  void StoreTextMessage();
  void StoreCarrier(int index, const Gateway& gateway);
  void AskCustomName();
  void AskCustomDomain(const std::string& name);

  AlertChoices& choices_;
  ProviderChoices& provider_;
  QuestionQueue& questions_;
};

}  // namespace pallomir
