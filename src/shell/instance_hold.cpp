#include "shell/instance_hold.h"

#include <string>

#include "shell/instance_guard.h"

namespace pallomir {

InstanceHold::InstanceHold(NamedMutex& mutex, InstanceSignal& signal, QuestionQueue& questions, Trace& trace)
    : mutex_(mutex), signal_(signal), questions_(questions), trace_(trace) {}

void InstanceHold::LetGo() {
  signal_.Stop();
  Release([] {});
  isLetGo_ = true;
}

void InstanceHold::TakeBack() {
  isLetGo_ = !mutex_.Create(kInstanceMutex);
  if (isLetGo_) trace_.Line("the mutex could not be taken again");
  signal_.Listen();
}

void InstanceHold::Release(const std::function<void()>& then) {
  if (isLetGo_) return then();
  const int error = mutex_.Release();
  if (error != 0) {
    questions_.Tell(
        "Mutex Release Error: " + std::to_string(error) + "\nhMutex = " + std::to_string(mutex_.Handle()),
        "Pallomir", Question::Icon::kNone, [then](const Answer&) { then(); });
  }
  mutex_.Close();
  if (error == 0) then();
}

}  // namespace pallomir
