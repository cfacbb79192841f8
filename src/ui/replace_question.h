#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "ui/question_queue.h"

namespace pallomir {

/// Calls `then` at once where there is no such file, and otherwise when the user agrees that it is replaced.
void AskToReplace(QuestionQueue& questions, const std::filesystem::path& file, const std::string& title,
                  std::function<void()> then);

}  // namespace pallomir
