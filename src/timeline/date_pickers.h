#pragma once

#include <array>
#include <string>

#include "base/civil_time.h"
#include "timeline/time_window.h"

namespace pallomir {

/// The format in which a picker is edited.
inline constexpr char kEditingFormat[] = "ddd MM-dd-yy hh:mm:ss tt";

/// The format in which a picker shows this value while it is not edited: as short as the value allows.
std::string PickerFormat(Millis value);

/// The two date-time pickers DTP(0) and DTP(1), without their widgets. They are the editing surface of the
/// time window and the source of truth. Values written here raise no change.
class DatePickers {
 public:
  Millis Value(int i) const { return picker(i).value; }
  const std::string& Format(int i) const { return picker(i).format; }
  TimeWindow Window() const { return {Value(0), Value(1)}; }

  void SetWindow(const TimeWindow& window);
  void SetPickerFormat(int i);

  /// Both pickers, the Reload button and the title show or hide together, whatever else hides one of them.
  /// DTP(1) then has its grace: the caller starts tmrDTP.
  void ShowAll(bool shown);
  bool AreShown() const { return shown_; }
  /// Whether DTP(1) is seen: hidden for the usual window of one day, unless a picker is being edited or has
  /// just been.
  bool IsEndVisible() const;
  bool IsReloadVisible() const { return shown_ && reloadVisible_; }

  /// Bit 2^i is set while picker i holds the keyboard focus.
  int PickerFocusMask() const { return focusMask_; }

  // What the user does with picker i.
  void GotFocus(int i);   ///< the caller stops tmrDTP
  void LostFocus(int i);  ///< the caller starts tmrDTP and gives the focus away
  void Changed(int i, Millis value);
  void DroppedDown(int i);
  /// True when the value was changed in the calendar: the caller moves the pointer to the Reload button.
  bool ClosedUp(int i);

  /// tmrDTP fired: the five seconds of grace are over.
  void GraceEnded() { grace_ = false; }
  /// The Reload button was pressed and has done its work.
  void Reloaded();
  void HideReload() { reloadVisible_ = false; }

 private:
  struct Picker {
    Millis value = 0;
    std::string format;
  };
  const Picker& picker(int i) const { return pickers_[static_cast<std::size_t>(i)]; }
  Picker& picker(int i) { return pickers_[static_cast<std::size_t>(i)]; }
  void StartMoved();

  std::array<Picker, 2> pickers_;
  bool shown_ = true;
  int focusMask_ = 0;
  bool changed_ = false;
  bool droppedDown_ = false;
  bool grace_ = false;  // from the moment a picker gets the focus, or all are shown, until tmrDTP fires
  bool reloadVisible_ = false;
};

}  // namespace pallomir
