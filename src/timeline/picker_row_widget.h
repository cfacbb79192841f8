#pragma once

#include <QObject>
#include <QTimer>
#include <array>
#include <functional>

#include "base/civil_time.h"

class QPushButton;
class QWidget;

namespace pallomir {

class DateTimePicker;

/// The two date pickers and the button that loads what they say, for somebody else's layout. While a mouse
/// button is down on one of them nothing is shown, hidden or shortened, so that no control moves away from
/// under the pointer before the release.
class PickerRow : public QObject {
 public:
  /// The controls are children of `parent`.
  explicit PickerRow(QWidget* parent);

  // What the user does with picker i.
  std::function<void(int i)> gotFocus;
  std::function<void(int i)> lostFocus;
  std::function<void(int i, Millis value)> changed;
  std::function<void(int i)> droppedDown;
  std::function<void(int i)> closedUp;
  /// `cmdOK_Reload` was pressed, or Enter in a picker while the button is there.
  std::function<void()> reload;

  /// From left to right.
  std::array<QWidget*, 3> Controls() const;

  void ShowPicker(int i, Millis value, const QString& format, bool visible);
  void ShowReload(bool visible);
  void MovePointerToReload();

  bool HasPickerFocus() const;
  /// Gives the keyboard to the start's day; false when the pickers are hidden.
  bool FocusStart();

 private:
  struct Look {
    Millis value = 0;
    QString format;
    bool visible = true;
  };
  void Connect(int i);
  bool IsPressed();
  void Show();

  std::array<DateTimePicker*, 2> DTP_{};
  QPushButton* cmdOK_Reload_;
  std::array<Look, 2> looks_;  // what is to be seen once no button is down
  bool reloadVisible_ = false;
  bool pressed_ = false;
  QTimer catchUp_;
};

}  // namespace pallomir
