#pragma once

#include <functional>
#include <map>
#include <utility>

#include "commands/command.h"

namespace pallomir {

/// Who does what a command asks for. Each command has at most one handler.
class CommandHandlers {
 public:
  /// Called with the command's number.
  using Handler = std::function<void(int number)>;

  void Set(Command command, Handler handler) { handlers_[command] = std::move(handler); }

  bool Has(Command command) const { return handlers_.contains(command); }

  /// False where nobody handles the command.
  bool Run(Command command, int number) const {
    const auto found = handlers_.find(command);
    if (found == handlers_.end()) return false;
    found->second(number);
    return true;
  }

 private:
  std::map<Command, Handler> handlers_;
};

}  // namespace pallomir
