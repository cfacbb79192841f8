#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

#include "platform/question_box.h"

class QDialog;

namespace pallomir {

/// Questions as message boxes and input boxes: over the window of this program that has the keyboard, else
/// over the main one. A question that is shown while another one is open takes its place; the older one is
/// answered as if it had been closed. One that comes while another program has the keyboard leaves it there.
class QtQuestionBox : public QObject, public QuestionBox {
 public:
  /// The main window. A box blocks the window that it stands over and those that this one stands over;
  /// without a window it stands alone.
  explicit QtQuestionBox(QWidget* window = nullptr);
  ~QtQuestionBox() override;

  /// For a window that is made later than the first question.
  void SetWindow(QWidget* window);

  void Show(const Question& question, AnswerHandler then) override;
  void BringForward() override;
  void Dismiss() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* Owner() const;
  void ShowOver(QWidget* owner, const Question& question, AnswerHandler then);
  void Finish(const Answer& answer);

  QPointer<QWidget> window_;
  QPointer<QDialog> dialog_;
  Question question_;  // that of the open box
  AnswerHandler then_;
  QObject context_;
};

}  // namespace pallomir
