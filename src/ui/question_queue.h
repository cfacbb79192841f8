#pragma once

#include <deque>
#include <string>

#include "platform/question_box.h"

namespace pallomir {

/// Questions and messages one after the other: the next is shown when the one before it has been answered. A
/// text that waits or shows already is not asked a second time; its handler is dropped with it.
class QuestionQueue {
 public:
  explicit QuestionQueue(QuestionBox& box) : box_(box) {}

  void Ask(Question question, AnswerHandler then = {});

  /// A message with an OK button.
  void Tell(const std::string& text, const std::string& title = "Pallomir",
            Question::Icon icon = Question::Icon::kNone, AnswerHandler then = {});

  /// Brings the open box, if there is one, to the front.
  void BringForward();

  /// Drops what waits and takes the open box away; no handler is called any more.
  void Close();

  bool IsEmpty() const { return waiting_.empty(); }

 private:
  struct Entry {
    Question question;
    AnswerHandler then;
  };
  void ShowNext();

  QuestionBox& box_;
  std::deque<Entry> waiting_;  // the first one shows
  bool closed_ = false;
};

}  // namespace pallomir
