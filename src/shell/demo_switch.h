#pragma once

#include <functional>

#include "platform/folders.h"
#include "platform/program_starter.h"
#include "platform/settings.h"
#include "settings/choice.h"
#include "shell/instance_hold.h"
#include "ui/question_queue.h"

namespace pallomir {

/// The switch between normal and demo mode: asks, stores the other mode and restarts the program in it. Where
/// the new instance can't be started this one goes on with the units that it has; the other mode is stored
/// for the next start.
class DemoSwitch {
 public:
  DemoSwitch(Choice<bool>& demoMode, InstanceHold& hold, Settings& settings, QuestionQueue& questions,
             ProgramStarter& programs, const Folders& folders);

  std::function<void()> leaving;  ///< last chance to store what the new instance reads
  std::function<void()> changed;  ///< the stored mode is another one
  std::function<void()> started;  ///< the new instance runs: this one ends

  void Ask();
  void Close() { closed_ = true; }  ///< an answer that still comes changes nothing

 private:
  void Switch();

  Choice<bool>& demoMode_;
  InstanceHold& hold_;
  Settings& settings_;
  QuestionQueue& questions_;
  ProgramStarter& programs_;
  Folders folders_;
  bool closed_ = false;
};

}  // namespace pallomir
