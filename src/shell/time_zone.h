#pragma once

#include <functional>

#include "platform/local_clock.h"
#include "ui/question_queue.h"

namespace pallomir {

/// Gives the clock the system's zone, or the offset that the user enters where the system can't say. `then`
/// comes at once, or with the answer.
void SetTimeZone(LocalClock& clock, QuestionQueue& questions, std::function<void()> then);

}  // namespace pallomir
