#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

#include "platform/question_box.h"

class QDialog;

namespace pallomir {

/// Questions as message boxes and input boxes over a window. A question that is shown while another one is
/// open takes its place; the older one is answered as if it had been closed.
class QtQuestionBox : public QuestionBox {
 public:
  /// The boxes block `window` and no other one; without a window they stand alone.
  explicit QtQuestionBox(QWidget* window = nullptr);
  ~QtQuestionBox() override;

  /// For a window that is made later than the first question.
  void SetWindow(QWidget* window);

  void Show(const Question& question, AnswerHandler then) override;
  void Dismiss() override;

 private:
  void Finish(const Answer& answer);

  QPointer<QWidget> window_;
  QPointer<QDialog> dialog_;
  AnswerHandler then_;
  QObject context_;
};

}  // namespace pallomir
