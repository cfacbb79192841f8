#pragma once

#include <string>
#include <string_view>

namespace pallomir {

/// A small store of the logged-in user, apart from the settings file. One key lives there: "Main Window
/// Handle".
class UserRegistry {
 public:
  virtual ~UserRegistry() = default;
  virtual std::string Get(std::string_view key, std::string_view defaultValue) const = 0;
  virtual void Save(std::string_view key, std::string_view value) = 0;
};

}  // namespace pallomir
