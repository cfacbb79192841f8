#pragma once

#include <functional>
#include <map>
#include <type_traits>

#include "commands/command.h"

namespace pallomir {

/// Who does what a command asks for. Each command has at most one handler.
class CommandHandlers {
 public:
  /// `handler` is called with the command's number. It may give back false where there was nothing to do.
  template <class Handler>
  void Set(Command command, Handler handler) {
    handlers_[command] = [handler](int number) {
      if constexpr (std::is_same_v<std::invoke_result_t<Handler, int>, bool>) {
        return handler(number);
      } else {
        handler(number);
        return true;
      }
    };
  }

  bool Has(Command command) const { return handlers_.contains(command); }

  /// False where nobody handles the command, or there was nothing to do.
  bool Run(Command command, int number) const {
    const auto found = handlers_.find(command);
    return found != handlers_.end() && found->second(number);
  }

 private:
  std::map<Command, std::function<bool(int number)>> handlers_;
};

}  // namespace pallomir
