#include "timeline/picker_panel.h"

#include <utility>

namespace pallomir {

PickerPanel::PickerPanel(PickerView& view, EventLoop& loop, const LocalClock& clock,
                         const Choice<int>& onStartup, Host host)
    : view_(view),
      clock_(clock),
      onStartup_(onStartup),
      host_(std::move(host)),
      tmrDTP_(loop.CreateTimer("tmrDTP", 5000, [this] { OnGraceTick(); })) {}

void PickerPanel::SetFirstWindow() {
  const Millis now = clock_.Now() / kSecond * kSecond;  // the pickers know no less
  pickers_.SetWindow(StartupWindow().value_or(TimeWindow{now, now + kDay}));
  window_ = pickers_.Window();
}

void PickerPanel::Close() {
  isClosed_ = true;
  tmrDTP_->SetEnabled(false);
}

void PickerPanel::ShowAll(bool shown) {
  pickers_.ShowAll(shown);
  tmrDTP_->SetEnabled(shown && !isClosed_);
  Show();
}

void PickerPanel::GotFocus(int i) {
  pickers_.GotFocus(i);
  tmrDTP_->SetEnabled(false);
  Show();
}

void PickerPanel::LostFocus(int i) {
  if (isClosed_) return;
  pickers_.LostFocus(i);
  tmrDTP_->SetEnabled(true);
  Show();
  host_.editingEnded();
}

void PickerPanel::Changed(int i, Millis value) {
  pickers_.Changed(i, value);
  Show();
}

void PickerPanel::ClosedUp(int i) {
  const bool changed = pickers_.ClosedUp(i);
  Show();
  if (changed) view_.MovePointerToReloadButton();
}

void PickerPanel::ReloadClicked() {
  window_ = pickers_.Window();
  host_.reload();
  pickers_.Reloaded();
  Show();
}

bool PickerPanel::MoveBy(int periods) { return NavigateTo(MovedBy(pickers_.Window(), periods)); }
bool PickerPanel::ZoomIn() { return NavigateTo(ZoomedIn(pickers_.Window())); }
bool PickerPanel::ZoomOut() { return NavigateTo(ZoomedOut(pickers_.Window())); }

bool PickerPanel::ZoomTo(double from, double to) { return NavigateTo(ZoomedTo(pickers_.Window(), from, to)); }

void PickerPanel::ReturnToCurrentDay() {
  auto window = StartupWindow();
  if (!window && host_.isLive()) window = WindowForChoice(StartupChoice::kSinceMidnight, clock_.Now());
  NavigateTo(window.value_or(pickers_.Window()));
}

void PickerPanel::ExtendTo(Millis end) {
  if (isClosed_) return;
  window_.end = end;
  if (IsEdited() || pickers_.IsReloadVisible()) return;
  pickers_.SetWindow(window_);
  pickers_.SetPickerFormat(1);
  Show();
}

std::optional<TimeWindow> PickerPanel::StartupWindow() const {
  return WindowForChoice(static_cast<StartupChoice>(onStartup_.Value()), clock_.Now() / kSecond * kSecond);
}

// Loads another window, if there is one. What was being changed in the pickers goes.
bool PickerPanel::NavigateTo(const std::optional<TimeWindow>& window) {
  if (!window || isClosed_) return false;
  pickers_.SetWindow(*window);
  window_ = pickers_.Window();
  for (const int i : {0, 1}) {
    if (!(pickers_.PickerFocusMask() & 1 << i)) pickers_.SetPickerFormat(i);
  }
  pickers_.HideReload();
  host_.reload();
  Show();
  return true;
}

void PickerPanel::OnGraceTick() {
  tmrDTP_->SetEnabled(false);
  pickers_.GraceEnded();
  Show();
}

void PickerPanel::Show() {
  view_.ShowPicker(0, pickers_.Value(0), pickers_.Format(0), pickers_.AreShown());
  view_.ShowPicker(1, pickers_.Value(1), pickers_.Format(1), pickers_.IsEndVisible());
  view_.ShowReloadButton(pickers_.IsReloadVisible());
  view_.ShowCaption(pickers_.AreShown());
}

}  // namespace pallomir
