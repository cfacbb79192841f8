#include "timeline/date_time_picker_widget.h"

#include <QCalendarWidget>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLocale>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QTimer>
#include <QWheelEvent>
#include <algorithm>
#include <utility>

#include "timeline/date_pickers.h"
#include "timeline/time_window.h"

namespace pallomir {
namespace {

// The letters of both differ in one place.
QString OfQt(QString format) { return format.replace("tt", "AP"); }

QDateTime AsQt(Millis time) { return QDateTime::fromMSecsSinceEpoch(time, Qt::UTC); }

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
  setMinimumDateTime(AsQt(FirstMoment()));
  setMaximumDateTime(AsQt(LastMoment()));
  calendarWidget()->setLocale(QLocale::c());
  calendarWidget()->installEventFilter(this);
  connect(this, &QDateTimeEdit::dateTimeChanged, this, [this] {
    if (changed) changed(Value());
  });
}

void DateTimePicker::ShowValue(Millis value, const QString& format) {
  const QSignalBlocker quiet(this);
  const QString ofQt = OfQt(format);
  if (displayFormat() != ofQt) setDisplayFormat(ofQt);
  const QDateTime wholeSeconds = AsQt(value - value % kSecond);
  if (dateTime() != wholeSeconds) setDateTime(wholeSeconds);
  // What the short formats leave out, the year above all.
  setToolTip(locale().toString(wholeSeconds, "dddd, MMMM d, yyyy, h:mm:ss AP"));
}

QSize DateTimePicker::sizeHint() const {
  int widest = 0;
  for (int day = 20; day <= 26; ++day) {  // a week: the days' names differ
    const QString text = locale().toString(QDateTime(QDate(2000, 8, day), QTime(20, 8, 8), Qt::UTC),
                                           OfQt(QString(kEditingFormat)));
    widest = std::max(widest, fontMetrics().horizontalAdvance(text + "  "));
  }
  QStyleOptionComboBox option;
  option.initFrom(this);
  option.editable = true;
  const QSize text(widest, QDateTimeEdit::sizeHint().height());
  const QSize whole = style()->sizeFromContents(QStyle::CT_ComboBox, &option, text, this);
  return {whole.width(), text.height()};
}

void DateTimePicker::FocusDay() {
  setFocus(Qt::ShortcutFocusReason);
  // The weekday is a section of the day too, but the first of them, and stays within its week.
  for (int section = sectionCount() - 1; section >= 0; --section)
    if (sectionAt(section) == DaySection) return SelectSection(section);
}

void DateTimePicker::SelectSection(int index) {
  setCurrentSectionIndex(index);
  setSelectedSection(sectionAt(index));
}

// Tab leaves out the weekday, which follows the day.
int DateTimePicker::FirstStop() const { return displayFormat().startsWith("ddd") ? 1 : 0; }

void DateTimePicker::focusInEvent(QFocusEvent* event) {
  QDateTimeEdit::focusInEvent(event);
  if (!std::exchange(told_, true) && gotFocus) gotFocus();  // which changes the sections
  if (event->reason() == Qt::TabFocusReason) SelectSection(FirstStop());
  if (event->reason() == Qt::BacktabFocusReason) SelectSection(sectionCount() - 1);
}

bool DateTimePicker::focusNextPrevChild(bool next) {
  if (!next && currentSectionIndex() <= FirstStop()) setCurrentSectionIndex(0);
  return QDateTimeEdit::focusNextPrevChild(next);
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

void DateTimePicker::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
    return QDateTimeEdit::keyPressEvent(event);
  interpretText();
  if (entered && !event->isAutoRepeat()) entered();
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
