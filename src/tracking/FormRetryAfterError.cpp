#include "tracking/FormRetryAfterError.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QVBoxLayout>

#include "platform/qt/owner_block.h"
#include "platform/qt/wrapped_label.h"
#include "tracking/retry_countdown.h"

namespace pallomir {
namespace {

// The message as it stands, with its address as a link. Nothing else of it is mark-up.
QString WithLink(const QString& message) {
  static const QRegularExpression kAddress("(https?://[^\\s<>\"]+)");
  QString text = message.toHtmlEscaped();
  text.replace(kAddress, "<a href=\"\\1\">\\1</a>");
  return "<div style=\"white-space: pre-wrap\">" + text + "</div>";
}

}  // namespace

FormRetryAfterError::FormRetryAfterError(QWidget* owner) : QDialog(owner) {
  new OwnerBlock(*this);
  setObjectName("FormRetryAfterError");
  setWindowTitle("Pallomir");
  message_ = new QLabel(this);
  message_->setObjectName("lblMessage");
  message_->setTextFormat(Qt::RichText);
  message_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::LinksAccessibleByMouse |
                                    Qt::LinksAccessibleByKeyboard);
  connect(message_, &QLabel::linkActivated, this, [this] {
    if (openPage) openPage();
  });
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

void FormRetryAfterError::SetMessage(const QString& message) {
  const QSize room = WrapWithinScreen(*message_, message, WithLink(message));
  message_->setMinimumHeight(room.height());
}

void FormRetryAfterError::ShowOver(bool takesKeyboard) {
  // In the middle each time: left where it was, it would creep with the frame that the desktop puts round it.
  if (!isVisible()) {
    adjustSize();
    move(parentWidget()->geometry().center() - rect().center());
  }
  AskForKeyboard(*this, takesKeyboard);
  show();
  // No attempt takes longer than that.
  constexpr qint64 kSoonMilliseconds = 60'000;
  if (takesKeyboard) {
    activateWindow();
  } else if (sinceHidden_.isValid() && sinceHidden_.elapsed() < kSoonMilliseconds) {
    lower();
  }
}

void FormRetryAfterError::hideEvent(QHideEvent* event) {
  sinceHidden_.start();
  QDialog::hideEvent(event);
}

void FormRetryAfterError::SetProgress(int bar, const QString& label) {
  bar_->setValue(bar);
  countdown_->setText(label);
}

void FormRetryAfterError::reject() {
  if (stopRetrying) stopRetrying();
}

}  // namespace pallomir
