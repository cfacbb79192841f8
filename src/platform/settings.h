#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pallomir {

/// The stored preferences: texts by key. Rooms use them as typed choices (settings/choice.h).
class Settings {
 public:
  virtual ~Settings() = default;
  /// The stored value; where there is none, `defaultValue`, which the key then keeps for this run.
  virtual std::string Get(std::string_view key, std::string_view defaultValue) = 0;
  /// Keeps the value, which reaches the disk when the event loop is next free, and returns it.
  virtual std::string Save(std::string_view key, std::string_view value) = 0;
  /// Brings what was saved to the disk now. Nothing, or the sentence that tells the user why it could not be.
  virtual std::optional<std::string> Flush() = 0;
};

}  // namespace pallomir
