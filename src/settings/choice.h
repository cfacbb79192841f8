#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "platform/settings.h"

namespace pallomir {

/// What the table of choices says of one: its key in the settings file, the value it has before anyone chose
/// one, and how it is written.
template <class T>
struct ChoiceRow;

/// Any text.
template <>
struct ChoiceRow<std::string> {
  std::string_view key;
  std::string_view initial;
};

template <>
struct ChoiceRow<bool> {
  std::string_view key;
  bool initial = false;
  std::string_view on = "True";
  std::string_view off = "False";
  bool isOffOtherwise = false;  ///< any text but `on` means off
};

/// A whole number from `least` to `most`, or one of the listed texts.
template <>
struct ChoiceRow<int> {
  std::string_view key;
  int initial = 0;
  int least = 0;
  int most = 0;
  std::optional<int> extra = {};            ///< one more number that is legal
  std::span<const char* const> texts = {};  ///< the number counts these from 0, and they are what is stored
  bool isMeasure = false;  ///< a fraction is cut off; what is less than the least counts as the least
};

/// The value that a stored text stands for, if any.
std::optional<std::string> ParseChoice(const ChoiceRow<std::string>& row, const std::string& text);
std::optional<bool> ParseChoice(const ChoiceRow<bool>& row, const std::string& text);
std::optional<int> ParseChoice(const ChoiceRow<int>& row, const std::string& text);

/// The text that stands for a legal value.
std::string ChoiceText(const ChoiceRow<std::string>& row, const std::string& value);
std::string ChoiceText(const ChoiceRow<bool>& row, bool value);
std::string ChoiceText(const ChoiceRow<int>& row, int value);

/// Gets a line for the trace about a stored text that a choice has no use for.
using ChoiceComplaint = std::function<void(const std::string&)>;

std::string UselessChoice(std::string_view key, const std::string& text, const std::string& takenAs);

/// One stored choice: read when the start-up comes to it, kept here from then on. Nobody else reads or
/// writes its key.
template <class T>
class Choice {
 public:
  /// The row outlives the choice, as does `complain`.
  Choice(Settings& settings, const ChoiceRow<T>& row, const ChoiceComplaint& complain)
      : settings_(settings), row_(row), complain_(complain), value_(row.initial) {}
  Choice(const Choice&) = delete;
  Choice& operator=(const Choice&) = delete;

  /// Reads what is stored; where that is nothing or makes no sense, it is the row's initial value.
  void Read() { ReadOr(T(row_.initial)); }
  /// The same with an initial value that is known only now.
  void ReadOr(T initial) {
    text_ = settings_.Get(row_.key, ChoiceText(row_, initial));
    auto read = ParseChoice(row_, text_);
    if (!read) complain_(UselessChoice(row_.key, text_, ChoiceText(row_, initial)));
    value_ = std::move(read).value_or(std::move(initial));
  }

  const T& Value() const { return value_; }

  void Store(T value) {
    value_ = std::move(value);
    text_ = settings_.Save(row_.key, ChoiceText(row_, value_));
  }
  /// Leaves the file alone where it holds this already.
  void StoreIfOther(T value) {
    if (ChoiceText(row_, value) != text_) Store(std::move(value));
  }

 private:
  Settings& settings_;
  const ChoiceRow<T>& row_;
  const ChoiceComplaint& complain_;
  T value_;
  std::string text_;  // as it is stored
};

}  // namespace pallomir
