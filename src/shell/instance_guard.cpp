#include "shell/instance_guard.h"

#include <utility>

#include "base/number_format.h"

namespace pallomir {

void GuardInstance(NamedMutex& mutex, UserRegistry& registry, InstanceSignal& signal,
                   QuestionQueue& questions, const std::function<void()>& run, std::function<void()> end) {
  if (!mutex.IsOwnedElsewhere(kInstanceMutex) && mutex.Create(kInstanceMutex)) return run();
  // Asked anew: of two starts in the same instant both find it free, and one of them comes too late.
  if (!mutex.IsOwnedElsewhere(kInstanceMutex)) {
    return questions.Tell("Error 881212: CreateMutex failed", "Pallomir", Question::Icon::kNone,
                          [end = std::move(end)](const Answer&) { end(); });
  }
  questions.Tell("There is already a copy of Pallomir running; a new one will not be created", "Pallomir",
                 Question::Icon::kNone, [&registry, &signal, end = std::move(end)](const Answer&) {
                   const auto handle = ParseInteger(registry.Get(kWindowHandleKey, "0")).value_or(0);
                   if (handle != 0) signal.AskToRaise(handle);
                   end();
                 });
}

}  // namespace pallomir
