#include "ui/replace_question.h"

#include <utility>

namespace pallomir {

void AskToReplace(QuestionQueue& questions, const std::filesystem::path& file, const std::string& title,
                  std::function<void()> then) {
  std::error_code error;
  if (!std::filesystem::exists(file, error)) return then();
  Question question;
  question.kind = Question::Kind::kYesNo;
  question.title = title;
  question.text = file.string() + " is there already. Replace it?";
  questions.Ask(question, [then = std::move(then)](const Answer& answer) {
    if (answer.yes) then();
  });
}

}  // namespace pallomir
