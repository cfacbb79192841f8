#pragma once

#include <functional>
#include <string>

namespace pallomir {

/// A message, question or input that the user is asked.
struct Question {
  enum class Kind { kMessage, kYesNo, kOkCancel, kInput };
  enum class Icon { kNone, kInformation, kExclamation, kQuestion, kError };
  Kind kind = Kind::kMessage;
  Icon icon = Icon::kNone;
  std::string title;
  std::string text;
  std::string defaultText;  ///< of an input
};

struct Answer {
  bool yes = false;  ///< "OK" or "Yes"; closing the box is the other one
  std::string text;  ///< of an input; empty when it was cancelled
};

using AnswerHandler = std::function<void(const Answer&)>;

/// Shows one question at a time. Never blocks: the answer comes from the event loop, exactly once. Who has
/// more than one question uses ui/question_queue.h.
class QuestionBox {
 public:
  virtual ~QuestionBox() = default;
  virtual void Show(const Question& question, AnswerHandler then) = 0;
  /// Brings an open box to the front and gives it the keyboard.
  virtual void BringForward() = 0;
  /// Takes an open box away; its handler is not called.
  virtual void Dismiss() = 0;
};

}  // namespace pallomir
