#include "alerts/alert_delivery.h"

#include <algorithm>
#include <utility>

#include "alerts/carriers.h"
#include "platform/menu_model.h"
#include "settings/choice_table.h"

namespace pallomir {
namespace {

constexpr int kByEmail = 1;
constexpr int kByText = 2;

/// An input box with what it shows at first.
Question Input(std::string text, std::string title, std::string first) {
  Question question;
  question.kind = Question::Kind::kInput;
  question.title = std::move(title);
  question.text = std::move(text);
  question.defaultText = std::move(first);
  return question;
}

}  // namespace

bool IsEmailAddress(std::string_view text) {
  // Counted from 1; 0 where there is none.
  const std::size_t at = text.rfind('@') + 1;
  const std::size_t dot = text.rfind('.') + 1;
  return at > 1 && dot > 3 && dot > at + 1;
}

bool IsPhoneNumber(std::string_view text) {
  return text.size() == 10 && text.find_first_not_of("0123456789") == std::string_view::npos;
}

AlertDelivery::AlertDelivery(AlertChoices& choices, ProviderChoices& provider, QuestionQueue& questions)
    : choices_(choices), provider_(provider), questions_(questions) {}

void AlertDelivery::AskEmail() {
  questions_.Ask(Input("Enter your email address below:", "Email Address", choices_.emailAddress.Value()),
                 [this](const Answer& answer) {
                   if (answer.text.empty()) return;
                   if (!IsEmailAddress(answer.text)) return AskEmail();
                   choices_.method.Store(kByEmail);
                   choices_.emailAddress.Store(answer.text);
                   choices_.address.Store(answer.text);
                   changed();
                 });
}

void AlertDelivery::AskPhone() {
  questions_.Ask(Input("Enter your 10-digit " + ChosenGateway().name + " mobile phone number below:",
                       "Mobile Phone Number", choices_.phoneNumber.Value()),
                 [this](const Answer& answer) {
                   if (answer.text.empty()) return;
                   if (!IsPhoneNumber(answer.text)) return AskPhone();
                   choices_.phoneNumber.Store(answer.text);
                   StoreTextMessage();
                   changed();
                 });
}

void AlertDelivery::ChooseCarrier(int index) {
  if (index == kCustomCarrierEntry) return AskCustomName();
  if (index == kCustomCarrier) return StoreCarrier(index, CustomGateway());
  const Carrier& carrier = Carriers()[static_cast<std::size_t>(index - 1)];
  StoreCarrier(index, {carrier.name, carrier.gateway});
}

void AlertDelivery::AskCustomName() {
  questions_.Ask(
      Input("Enter Your Mobile Provider's Name Below:", "Mobile Provider's Name", CustomGateway().name),
      [this](const Answer& answer) {
        if (!answer.text.empty()) AskCustomDomain(answer.text);
      });
}

void AlertDelivery::AskCustomDomain(const std::string& name) {
  questions_.Ask(
      Input("Enter Your Mobile Provider's URL Below:", "Mobile Provider's URL", CustomGateway().domain),
      [this, name](const Answer& answer) {
        if (answer.text.empty()) return;
        provider_.customName.Store(name);
        provider_.customUrl.Store(answer.text);
        StoreCarrier(kCustomCarrier, {name, answer.text});
      });
}

void AlertDelivery::StoreCarrier(int index, const Gateway& gateway) {
  provider_.index.Store(index);
  provider_.name.Store(gateway.name);
  provider_.url.Store(gateway.domain);
  StoreTextMessage();
  changed();
}

void AlertDelivery::StoreTextMessage() {
  choices_.method.Store(kByText);
  choices_.address.Store(TextAddress());
}

std::string AlertDelivery::Caption() const {
  switch (choices_.method.Value()) {
    case kByEmail:
      return "&Email Me At: " + Doubled(choices_.emailAddress.Value());
    case kByText:
      return "&Text Me At: " + Doubled(TextAddress());
    default:
      return "Alerts to: (unconfigured)";
  }
}

std::string AlertDelivery::TextAddress() const {
  return choices_.phoneNumber.Value() + "@" + ChosenGateway().domain;
}

// One of the user's own of which nothing is known is as good as none.
int AlertDelivery::CarrierIndex() const {
  const int index = provider_.index.Value();
  return index == kCustomCarrier && CustomGateway().name.empty() ? choice::kProviderIndex.initial : index;
}

// A carrier keeps the domain that it was chosen with; before anyone chose one, the table's counts.
AlertDelivery::Gateway AlertDelivery::ChosenGateway() const {
  const int index = CarrierIndex();
  if (index == kCustomCarrier) return CustomGateway();
  const Carrier& carrier = Carriers()[static_cast<std::size_t>(index - 1)];
  const std::string& stored = provider_.url.Value();
  const bool isChosen =
      index == provider_.index.Value() && !stored.empty() && stored != choice::kProviderUrl.initial;
  return {carrier.name, isChosen ? stored : carrier.gateway};
}

AlertDelivery::Gateway AlertDelivery::CustomGateway() const {
  if (!provider_.customName.Value().empty() && !provider_.customUrl.Value().empty())
    return {provider_.customName.Value(), provider_.customUrl.Value()};
  if (provider_.index.Value() != kCustomCarrier || provider_.name.Value() == choice::kProviderName.initial)
    return {};
  return {provider_.name.Value(), provider_.url.Value()};
}

}  // namespace pallomir
