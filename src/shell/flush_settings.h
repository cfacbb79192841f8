#pragma once

#include <functional>

#include "platform/settings.h"
#include "ui/question_queue.h"

namespace pallomir {

/// Brings the settings to the disk before the end, then calls `then`. Where that fails the user is asked
/// whether to try once more; no change is lost without a word.
void FlushSettings(Settings& settings, QuestionQueue& questions, std::function<void()> then);

}  // namespace pallomir
