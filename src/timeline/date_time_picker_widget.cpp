#include "timeline/date_time_picker_widget.h"

#include <QCalendarWidget>
#include <QFocusEvent>
#include <QLocale>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QTimer>
#include <QWheelEvent>
#include <utility>

namespace pallomir {
namespace {

// A popup of our own, or another program's window, in front is no loss of focus for the picker.
bool IsPassing(Qt::FocusReason reason) {
  return reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason;
}

}  // namespace

DateTimePicker::DateTimePicker(QWidget* parent, const QString& name, const QString& accessibleName)
    : QDateTimeEdit(parent) {
  setObjectName(name);
  setAccessibleName(accessibleName);
  setLocale(QLocale::c());
  setTimeSpec(Qt::UTC);
  setCalendarPopup(true);
  setFocusPolicy(Qt::StrongFocus);
  setMinimumDateTime(QDateTime(QDate(1900, 1, 1), QTime(0, 0), Qt::UTC));
  setMaximumDateTime(QDateTime(QDate(9999, 12, 31), QTime(23, 59, 59), Qt::UTC));
  calendarWidget()->setLocale(QLocale::c());
  calendarWidget()->installEventFilter(this);
  connect(this, &QDateTimeEdit::dateTimeChanged, this, [this] {
    if (changed) changed(Value());
  });
}

void DateTimePicker::ShowValue(Millis value, const QString& format) {
  QString ofQt = format;
  ofQt.replace("tt", "AP");
  const QSignalBlocker quiet(this);
  if (displayFormat() != ofQt) setDisplayFormat(ofQt);
  const Millis wholeSeconds = value - value % kSecond;
  if (Value() != wholeSeconds) setDateTime(QDateTime::fromMSecsSinceEpoch(wholeSeconds, Qt::UTC));
  updateGeometry();
}

QSize DateTimePicker::sizeHint() const {
  QStyleOptionComboBox option;
  option.initFrom(this);
  option.editable = true;
  const QSize text(fontMetrics().horizontalAdvance(this->text() + "  "), QDateTimeEdit::sizeHint().height());
  const QSize whole = style()->sizeFromContents(QStyle::CT_ComboBox, &option, text, this);
  return {whole.width(), text.height()};
}

void DateTimePicker::focusInEvent(QFocusEvent* event) {
  QDateTimeEdit::focusInEvent(event);
  if (!std::exchange(told_, true) && gotFocus) gotFocus();
}

void DateTimePicker::focusOutEvent(QFocusEvent* event) {
  QDateTimeEdit::focusOutEvent(event);
  if (!IsPassing(event->reason())) TellLost();
}

// While the window was not active the focus inside it may have gone elsewhere without an event.
void DateTimePicker::changeEvent(QEvent* event) {
  QDateTimeEdit::changeEvent(event);
  if (event->type() != QEvent::ActivationChange || !isActiveWindow()) return;
  QTimer::singleShot(0, this, [this] {
    if (isActiveWindow() && !hasFocus()) TellLost();
  });
}

void DateTimePicker::TellLost() {
  if (std::exchange(told_, false) && lostFocus) lostFocus();
}

// Scrolling past the picker must not change a date.
void DateTimePicker::wheelEvent(QWheelEvent* event) {
  if (hasFocus()) {
    QDateTimeEdit::wheelEvent(event);
  } else {
    event->ignore();
  }
}

bool DateTimePicker::eventFilter(QObject* watched, QEvent* event) {
  if (watched == calendarWidget()) {
    if (event->type() == QEvent::Show && droppedDown) droppedDown();
    if (event->type() == QEvent::Hide && closedUp) closedUp();
  }
  return QDateTimeEdit::eventFilter(watched, event);
}

}  // namespace pallomir
