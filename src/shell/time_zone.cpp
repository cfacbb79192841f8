#include "shell/time_zone.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/number_format.h"

namespace pallomir {

void SetTimeZone(LocalClock& clock, QuestionQueue& questions, std::function<void()> then) {
  if (clock.TakeSystemZone()) return then();
  Question question;
  question.kind = Question::Kind::kInput;
  question.title = "Pallomir";
  question.text = "Enter timezone offset in hours (example shown for Eastern Standard Time):";
  question.defaultText = "5.0";
  questions.Ask(question, [&clock, then = std::move(then)](const Answer& answer) {
    // No zone lies farther out than 14 hours; what is no number counts as Greenwich.
    const double hours = std::clamp(ParseNumber(answer.text).value_or(0), -14.0, 14.0);
    clock.SetOffset(static_cast<int>(std::lround(hours * 60)));
    then();
  });
}

}  // namespace pallomir
