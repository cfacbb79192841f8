#include "tracking/FormRetryAfterError.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "tracking/retry_countdown.h"

namespace pallomir {

FormRetryAfterError::FormRetryAfterError(QWidget* owner) : QDialog(owner) {
  setObjectName("FormRetryAfterError");
  setWindowTitle("Pallomir");
  setWindowModality(Qt::WindowModal);  // the owner takes no input meanwhile
  message_ = new QLabel(this);
  message_->setObjectName("lblMessage");
  message_->setTextFormat(Qt::PlainText);
  message_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  bar_ = new QProgressBar(this);
  bar_->setObjectName("PB");
  bar_->setRange(0, RetryCountdown::kLastTick);
  bar_->setTextVisible(false);
  bar_->setAccessibleName("Time until the next attempt");
  countdown_ = new QLabel(this);
  countdown_->setObjectName("lblT");

  auto* buttons = new QHBoxLayout;
  const auto addButton = [&](const char* name, const QString& caption, std::function<void()>& action) {
    auto* button = new QPushButton(caption, this);
    button->setObjectName(name);
    connect(button, &QPushButton::clicked, this, [&action] {
      if (action) action();
    });
    buttons->addWidget(button);
    return button;
  };
  addButton("cmdRetryNow", "&Retry Now", retryNow)->setDefault(true);
  addButton("cmdStopRetrying", "&Stop Retrying", stopRetrying);
  addButton("cmdQuit", "&End Session", quit);

  auto* rows = new QVBoxLayout(this);
  rows->addWidget(message_);
  rows->addWidget(bar_);
  rows->addWidget(countdown_);
  rows->addLayout(buttons);
  rows->setSizeConstraint(QLayout::SetFixedSize);  // the dialog follows the length of the message
}

void FormRetryAfterError::SetMessage(const QString& message) { message_->setText(message); }

void FormRetryAfterError::SetProgress(int bar, const QString& label) {
  bar_->setValue(bar);
  countdown_->setText(label);
}

void FormRetryAfterError::reject() {
  if (stopRetrying) stopRetrying();
}

}  // namespace pallomir
