#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/event_loop.h"
#include "platform/local_clock.h"
#include "settings/choice.h"
#include "timeline/date_pickers.h"

namespace pallomir {

/// The row of the pickers. The main window implements it.
class PickerView {
 public:
  virtual ~PickerView() = default;
  virtual void ShowPicker(int i, Millis value, const std::string& format, bool visible) = 0;
  virtual void ShowReloadButton(bool visible) = 0;  ///< `cmdOK_Reload`
  virtual void MovePointerToReloadButton() = 0;
  virtual void ShowCaption(bool visible) = 0;  ///< `txtCaption`, which stands beside the pickers
};

/// The time window, the two pickers that show and edit it, and the commands that move and scale it.
class PickerPanel {
 public:
  struct Host {
    std::function<void()> reload;        ///< the time window is another one: its data are wanted
    std::function<void()> editingEnded;  ///< a picker has lost the keyboard
    /// Points are shown as they come: the current day is then shown also where the start-up loads none.
    std::function<bool()> isLive;
  };

  /// `onStartup` counts as StartupChoice does. All arguments outlive the panel.
  PickerPanel(PickerView& view, EventLoop& loop, const LocalClock& clock, const Choice<int>& onStartup,
              Host host);

  /// The window that the On Startup choice sets; nothing is loaded.
  void SetFirstWindow();
  /// Nothing is shown or loaded from here on.
  void Close();

  /// Local times.
  const TimeWindow& Window() const { return window_; }
  /// A picker has the keyboard: hot keys are its own.
  bool IsEdited() const { return pickers_.PickerFocusMask() != 0; }
  /// The pickers and the title beside them show or hide together.
  void ShowAll(bool shown);

  // What the user does with picker i.
  void GotFocus(int i);
  void LostFocus(int i);
  void Changed(int i, Millis value);
  void DroppedDown(int i) { pickers_.DroppedDown(i); }
  void ClosedUp(int i);
  void ReloadClicked();  ///< `cmdOK_Reload`

  // Another window. False where there is none to go to.
  bool MoveBy(int periods);
  bool ZoomIn();
  bool ZoomOut();
  bool ZoomTo(double from, double to);  ///< shares of the window
  void ReturnToCurrentDay();
  /// This window, as if it had been set in the pickers and Reload been pressed.
  void Load(const TimeWindow& window) { NavigateTo(window); }

  /// The window goes on to this end; nothing is loaded. Dates that are being edited stay as they are.
  void ExtendTo(Millis end);

 private:
  std::optional<TimeWindow> StartupWindow() const;
  bool NavigateTo(const std::optional<TimeWindow>& window);
  void OnGraceTick();
  void Show();

  PickerView& view_;
  const LocalClock& clock_;
  const Choice<int>& onStartup_;
  Host host_;
  DatePickers pickers_;
  TimeWindow window_;
  bool isClosed_ = false;
  std::unique_ptr<Timer> tmrDTP_;
};

}  // namespace pallomir
