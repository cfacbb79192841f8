#pragma once

#include <QDateTimeEdit>
#include <functional>

#include "base/civil_time.h"

namespace pallomir {

/// A date-time picker with a drop-down calendar. It knows plain times without zones and English names only.
/// What the program shows raises no event; what the user does is told through the callbacks.
class DateTimePicker : public QDateTimeEdit {
 public:
  DateTimePicker(QWidget* parent, const QString& name, const QString& accessibleName);

  std::function<void()> gotFocus;
  std::function<void()> lostFocus;
  std::function<void(Millis)> changed;
  std::function<void()> droppedDown;
  std::function<void()> closedUp;
  std::function<void()> entered;  ///< Enter was pressed; what was typed has been taken over

  /// `format` in the letters of timeline/date_pickers.h. Ignored where it changes nothing, so that a value
  /// that is being typed is not disturbed.
  void ShowValue(Millis value, const QString& format);

  /// Gives the keyboard to the day: what arrows change first in a date.
  void FocusDay();

  /// As wide as its longest text: in whichever format it shows, its arrow stays where it is.
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool focusNextPrevChild(bool next) override;

 private:
  int FirstStop() const;
  void SelectSection(int index);
  void TellLost();
  Millis Value() const { return dateTime().toMSecsSinceEpoch(); }

  bool told_ = false;  // gotFocus was called, lostFocus not yet
};

}  // namespace pallomir
