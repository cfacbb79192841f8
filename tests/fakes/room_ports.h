#pragma once

#include "base/trace.h"
#include "fakes/fake_event_loop.h"
#include "fakes/fake_system.h"
#include "platform/local_clock.h"
#include "settings/stored_choices.h"
#include "ui/question_queue.h"

namespace pallomir::fakes {

/// What most rooms are given, for the fixtures of their tests.
class RoomPorts {
 protected:
  FakeEventLoop loop_;
  FakeClock clock_;
  LocalClock localClock_{clock_};
  FakeSettings settings_;
  StoredChoices choices_{settings_, [](const std::string&) {}, [](const std::string&) {}};
  FakeQuestionBox box_;
  QuestionQueue questions_{box_};
  std::vector<std::string> traced_;
  Trace trace_{[] { return 0.0; }, [this](const std::string& line) { traced_.push_back(line); }};
};

}  // namespace pallomir::fakes
