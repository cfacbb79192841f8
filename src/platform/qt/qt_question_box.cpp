#include "platform/qt/qt_question_box.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QEvent>
#include <QInputDialog>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMessageBox>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <utility>

#include "platform/qt/owner_block.h"
#include "platform/qt/wrapped_label.h"

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

// A message that is higher than two thirds of the screen gets a scroll bar: the buttons stay in reach under
// any text.
void ShowText(QMessageBox& box, const QString& text) {
  box.setText(text);
  auto* label = box.findChild<QLabel*>("qt_msgbox_label");
  if (!label) return;
  const QSize room = WrapWithinScreen(*label, text);
  const int highest = box.screen()->availableGeometry().height() * 2 / 3;
  if (room.height() <= highest) return;
  auto* area = new QScrollArea(&box);
  area->setFrameShape(QFrame::NoFrame);
  area->setWidgetResizable(true);
  area->setMinimumSize(room.width() + area->verticalScrollBar()->sizeHint().width() + 8, highest);
  delete box.layout()->replaceWidget(label, area);
  area->setWidget(label);
}

QMessageBox* MakeMessageBox(const Question& question, QWidget* window) {
  auto* box = new QMessageBox(window);
  // Texts come from files and servers too; none of them is mark-up.
  box->setTextFormat(Qt::PlainText);
  box->setIcon(IconOf(question.icon));
  ShowText(*box, QString::fromStdString(question.text).remove('\r'));
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
  // The label belongs to the line below it, so that a single "&" would be an access key.
  box->setLabelText(QString::fromStdString(question.text).replace("&", "&&"));
  box->setTextValue(QString::fromStdString(question.defaultText));
  for (auto* label : box->findChildren<QLabel*>()) {
    label->setTextFormat(Qt::PlainText);
    WrapWithinScreen(*label, label->text());
  }
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

QtQuestionBox::~QtQuestionBox() { QtQuestionBox::Dismiss(); }

void QtQuestionBox::SetWindow(QWidget* window) { window_ = window; }

// Over the window of ours that has the keyboard: the answer is wanted there. A modal one would block a box
// beside it. A window that does not belong to the main one stays free of boxes, so that it can be closed.
QWidget* QtQuestionBox::Owner() const {
  const auto isOfMain = [this](const QWidget* widget) {
    while (widget && widget != window_) widget = widget->parentWidget();
    return widget != nullptr;
  };
  for (QWidget* window : {QApplication::activeWindow(), QApplication::activeModalWidget()})
    if (window && window != dialog_ && window->isVisible() && isOfMain(window)) return window;
  return window_;
}

void QtQuestionBox::Show(const Question& question, AnswerHandler then) {
  if (then_) {
    QMetaObject::invokeMethod(
        &context_, [older = then_] { older({}); }, Qt::QueuedConnection);
  }
  ShowOver(Owner(), question, std::move(then));
}

void QtQuestionBox::ShowOver(QWidget* owner, const Question& question, AnswerHandler then) {
  Dismiss();
  question_ = question;
  then_ = std::move(then);
  QDialog* dialog = question.kind == Question::Kind::kInput
                        ? static_cast<QDialog*>(MakeInputDialog(question, owner))
                        : MakeMessageBox(question, owner);
  dialog->setObjectName("questionBox");
  dialog->setWindowTitle(QString::fromStdString(question.title));
  QObject::connect(dialog, &QDialog::finished, &context_,
                   [this, dialog](int result) { Finish(AnswerOf(dialog, result)); });
  dialog_ = dialog;
  if (owner && owner != window_) owner->installEventFilter(this);
  // A program that is starting may take the keyboard, later only the one that the user works with.
  const bool takesKeyboard = QApplication::activeWindow() || !window_ || !window_->isVisible();
  new OwnerBlock(*dialog);
  AskForKeyboard(*dialog, takesKeyboard);
  dialog->setModal(false);
  dialog->show();
  if (takesKeyboard) dialog->activateWindow();
}

// A window that goes takes its boxes with it; the question stays.
bool QtQuestionBox::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Hide && dialog_ && watched == dialog_->parent()) {
    Question question = question_;
    if (const auto* input = qobject_cast<const QInputDialog*>(dialog_.data()))
      question.defaultText = input->textValue().toStdString();
    ShowOver(window_, question, then_);
  }
  return QObject::eventFilter(watched, event);
}

void QtQuestionBox::BringForward() {
  if (!dialog_) return;
  dialog_->raise();
  dialog_->activateWindow();
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
  if (dialog->parent()) dialog->parent()->removeEventFilter(this);
  dialog->disconnect(&context_);
  dialog->hide();
  dialog->deleteLater();
}

}  // namespace pallomir
