#include "platform/qt/qt_question_box.h"

#include <QDialogButtonBox>
#include <QInputDialog>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMessageBox>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <algorithm>
#include <utility>

namespace pallomir {
namespace {

QMessageBox::Icon IconOf(Question::Icon icon) {
  switch (icon) {
    case Question::Icon::kInformation:
      return QMessageBox::Information;
    case Question::Icon::kExclamation:
      return QMessageBox::Warning;
    case Question::Icon::kQuestion:
      return QMessageBox::Question;
    case Question::Icon::kError:
      return QMessageBox::Critical;
    case Question::Icon::kNone:
      break;
  }
  return QMessageBox::NoIcon;
}

// As wide as its longest line within half of the screen, and with a scroll bar where it is higher than two
// thirds of it: the buttons stay in reach under any text.
void FitText(QMessageBox& box, const QWidget* window) {
  auto* label = box.findChild<QLabel*>("qt_msgbox_label");
  if (!label) return;
  const QSize screen = (window ? window->screen() : box.screen())->availableGeometry().size();
  label->setWordWrap(true);
  const QRect lines =
      label->fontMetrics().boundingRect(QRect(0, 0, screen.width() / 2, 0), Qt::TextWordWrap, label->text());
  const int width = std::min(lines.width() + 2, screen.width() / 2);
  label->setMinimumWidth(width);
  if (lines.height() <= screen.height() * 2 / 3) return;
  auto* area = new QScrollArea(&box);
  area->setFrameShape(QFrame::NoFrame);
  area->setWidgetResizable(true);
  area->setMinimumSize(width + area->verticalScrollBar()->sizeHint().width() + 8, screen.height() * 2 / 3);
  delete box.layout()->replaceWidget(label, area);
  area->setWidget(label);
}

QMessageBox* MakeMessageBox(const Question& question, QWidget* window) {
  auto* box = new QMessageBox(window);
  // Texts come from files and servers too; none of them is mark-up.
  box->setTextFormat(Qt::PlainText);
  box->setText(QString::fromStdString(question.text).remove('\r'));
  box->setIcon(IconOf(question.icon));
  FitText(*box, window);
  switch (question.kind) {
    case Question::Kind::kYesNo:
      box->setStandardButtons(QMessageBox::Yes | QMessageBox::No);
      box->setDefaultButton(QMessageBox::Yes);
      box->setEscapeButton(QMessageBox::No);
      break;
    case Question::Kind::kOkCancel:
      box->setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
      box->setDefaultButton(QMessageBox::Ok);
      break;
    default:
      box->setStandardButtons(QMessageBox::Ok);
  }
  return box;
}

QInputDialog* MakeInputDialog(const Question& question, QWidget* window) {
  auto* box = new QInputDialog(window);
  box->setInputMode(QInputDialog::TextInput);
  box->setLabelText(QString::fromStdString(question.text));
  box->setTextValue(QString::fromStdString(question.defaultText));
  for (auto* label : box->findChildren<QLabel*>()) label->setTextFormat(Qt::PlainText);
  for (auto* line : box->findChildren<QLineEdit*>()) line->setObjectName("questionText");
  return box;
}

Answer AnswerOf(const QDialog* dialog, int result) {
  if (const auto* input = qobject_cast<const QInputDialog*>(dialog)) {
    const bool taken = result == QDialog::Accepted;
    return {taken, taken ? input->textValue().toStdString() : std::string()};
  }
  return {result == QMessageBox::Yes || result == QMessageBox::Ok, {}};
}

}  // namespace

QtQuestionBox::QtQuestionBox(QWidget* window) : window_(window) {}

QtQuestionBox::~QtQuestionBox() { Dismiss(); }

void QtQuestionBox::SetWindow(QWidget* window) { window_ = window; }

void QtQuestionBox::Show(const Question& question, AnswerHandler then) {
  if (then_) {
    QMetaObject::invokeMethod(
        &context_, [older = then_] { older({}); }, Qt::QueuedConnection);
  }
  Dismiss();
  then_ = std::move(then);
  QDialog* dialog = question.kind == Question::Kind::kInput
                        ? static_cast<QDialog*>(MakeInputDialog(question, window_))
                        : MakeMessageBox(question, window_);
  dialog->setObjectName("questionBox");
  dialog->setWindowTitle(QString::fromStdString(question.title));
  QObject::connect(dialog, &QDialog::finished, &context_,
                   [this, dialog](int result) { Finish(AnswerOf(dialog, result)); });
  dialog_ = dialog;
  dialog->open();
}

// The handler may show the next question or end this object, so it comes last and from the event loop.
void QtQuestionBox::Finish(const Answer& answer) {
  AnswerHandler then = std::exchange(then_, {});
  Dismiss();
  if (!then) return;
  QMetaObject::invokeMethod(
      &context_, [then = std::move(then), answer] { then(answer); }, Qt::QueuedConnection);
}

void QtQuestionBox::Dismiss() {
  then_ = {};
  if (!dialog_) return;
  QDialog* dialog = std::exchange(dialog_, nullptr);
  dialog->disconnect(&context_);
  dialog->hide();
  dialog->deleteLater();
}

}  // namespace pallomir
