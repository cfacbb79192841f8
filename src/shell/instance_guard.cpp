#include "shell/instance_guard.h"

#include <utility>

#include "base/number_format.h"
#include "shell/settings_keys.h"

namespace pallomir {

void GuardInstance(NamedMutex& mutex, UserRegistry& registry, InstanceSignal& signal,
                   QuestionQueue& questions, const std::function<void()>& run, std::function<void()> end) {
  if (mutex.IsOwnedElsewhere(kInstanceMutex)) {
    questions.Tell(
        "There is already a copy of Pallomir running; a new one will not be created", "Pallomir",
        Question::Icon::kNone, [&registry, &signal, end = std::move(end)](const Answer&) {
          const auto handle =
              ParseInteger(registry.Get(kWindowHandleKey.key, kWindowHandleKey.defaultValue)).value_or(0);
          if (handle != 0) signal.AskToRaise(handle);
          end();
        });
    return;
  }
  if (!mutex.Create(kInstanceMutex)) {
    questions.Tell("Error 881212: CreateMutex failed", "Pallomir", Question::Icon::kNone,
                   [end = std::move(end)](const Answer&) { end(); });
    return;
  }
  run();
}

}  // namespace pallomir
