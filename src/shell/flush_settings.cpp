#include "shell/flush_settings.h"

#include <utility>

namespace pallomir {

void FlushSettings(Settings& settings, QuestionQueue& questions, std::function<void()> then) {
  const auto failure = settings.Flush();
  if (!failure) return then();
  Question question;
  question.kind = Question::Kind::kYesNo;
  question.icon = Question::Icon::kExclamation;
  question.title = "Pallomir";
  question.text = *failure + "\nTry again? Otherwise the last changes are lost.";
  questions.Ask(question, [&settings, &questions, then = std::move(then)](const Answer& answer) {
    if (answer.yes) return FlushSettings(settings, questions, then);
    then();
  });
}

}  // namespace pallomir
