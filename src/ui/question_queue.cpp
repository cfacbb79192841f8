#include "ui/question_queue.h"

#include <algorithm>
#include <utility>

namespace pallomir {

void QuestionQueue::Ask(Question question, AnswerHandler then) {
  if (closed_) return;
  const bool isThere = std::any_of(waiting_.begin(), waiting_.end(),
                                   [&](const Entry& entry) { return entry.question.text == question.text; });
  if (isThere) return;
  waiting_.push_back({std::move(question), std::move(then)});
  if (waiting_.size() == 1) ShowNext();
}

void QuestionQueue::Tell(const std::string& text, const std::string& title, Question::Icon icon,
                         AnswerHandler then) {
  Ask({Question::Kind::kMessage, icon, title, text, ""}, std::move(then));
}

void QuestionQueue::BringForward() {
  if (!waiting_.empty()) box_.BringForward();
}

void QuestionQueue::Close() {
  closed_ = true;
  if (!waiting_.empty()) box_.Dismiss();
  waiting_.clear();
}

void QuestionQueue::ShowNext() {
  box_.Show(waiting_.front().question, [this](const Answer& answer) {
    if (closed_) return;
    const AnswerHandler then = std::move(waiting_.front().then);
    waiting_.pop_front();
    if (!waiting_.empty()) ShowNext();
    if (then) then(answer);
  });
}

}  // namespace pallomir
