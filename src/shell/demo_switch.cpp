#include "shell/demo_switch.h"

#include <string>

#include "dataserver/open_result.h"

namespace pallomir {

DemoSwitch::DemoSwitch(Choice<bool>& demoMode, InstanceHold& hold, Settings& settings,
                       QuestionQueue& questions, ProgramStarter& programs, const Folders& folders)
    : demoMode_(demoMode),
      hold_(hold),
      settings_(settings),
      questions_(questions),
      programs_(programs),
      folders_(folders) {}

void DemoSwitch::Ask() {
  Question question;
  question.kind = Question::Kind::kOkCancel;
  question.title = "Pallomir";
  question.text =
      std::string("Do you want to ") + (demoMode_.Value() ? "exit" : "enter") +
      " Demo Mode?\r\nIf you do, then Pallomir Display will\r\n   exit and restart in the new mode.";
  questions_.Ask(question, [this](const Answer& answer) {
    if (answer.yes && !closed_) Switch();
  });
}

void DemoSwitch::Switch() {
  leaving();
  hold_.LetGo();
  demoMode_.Store(!demoMode_.Value());
  changed();
  // The new instance reads what is on the disk.
  const auto unsaved = settings_.Flush();
  const ProgramStart start =
      unsaved ? ProgramStart{}
              : programs_.Start(folders_.application / folders_.executable, {}, folders_.application);
  if (start.program) return started();
  hold_.TakeBack();
  questions_.Tell(unsaved.value_or("Error: " + std::string(OpenErrorMessage(OpenResultOf(start.error)))),
                  "Run", Question::Icon::kError);
}

}  // namespace pallomir
