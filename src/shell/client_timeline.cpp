#include <algorithm>
#include <string>
#include <vector>

#include "shell/client.h"

// The time window with its pickers, and the strips under the map.

namespace pallomir {

void Client::Timeline_Resize() {
  if (frame_.IsMinimised() || !ports_.view.IsTimelineVisible() || book_.enabledCount == 0) {
    mapUpdating_.HideWhenDone();  // there is nothing to redraw that would do it
    return;
  }
  ports_.trace.Line("Timeline_Resize begin...");
  picture_ = {};  // until the redraw: its columns may be others now
  ports_.view.LayOutTimeline(book_.enabledCount);
  tmrRedraw_->SetEnabled(true);
  ports_.trace.Line("...end Timeline_Resize");
}

void Client::OnRedrawTick() {
  ports_.trace.Line("tmrRedraw_Timer begin");
  Timeline_Resize();
  tmrRedraw_->SetEnabled(false);
  std::vector<TimelineUnit> units;
  for (std::size_t k = 1; k <= store_.UnitCount(); ++k) {
    units.push_back({LabelOf(k).description, UnitColour(k), store_.Track(k).Points()});
  }
  picture_ = DrawTimeline(window_, utcOffsetMinutes_, ports_.view.TimelineWidth(), units);
  ports_.view.ShowTimelinePicture(picture_);
  mapUpdating_.HideWhenDone();
  ports_.trace.Line("...end tmrRedraw_Timer");
}

void Client::TimelineHovered(int row, int column) {
  const auto k = static_cast<std::size_t>(row);
  if (closing_ || row < 1 || k > store_.UnitCount()) return;
  const std::int32_t point = PointUnder(picture_, row, column);
  const auto facts = FactsOf(k, point);
  ports_.view.ShowTimelineInfo(HoverText(LabelOf(k), facts, Length()));
  if (facts) ShowPointMarker(k, static_cast<std::size_t>(point) + 1);
  tmrTimelineInfo_->SetEnabled(true);
}

void Client::TimelineLeft() { OnTimelineInfoTick(); }

void Client::OnTimelineInfoTick() {
  tmrTimelineInfo_->SetEnabled(false);
  ports_.view.HideTimelineInfo();
}

void Client::TimelineDragged(double from, double to) {
  if (!closing_) NavigateTo(ZoomedTo(pickers_.Window(), from, to));
}

// The number is the one that the digit keys name.
UnitLabel Client::LabelOf(std::size_t k) const { return {book_.enabledToList[k], book_.descriptions[k]}; }

// A picture may be older than the points: what it names need not be there any more.
std::optional<PointFacts> Client::FactsOf(std::size_t k, std::int32_t pointIndex) const {
  const UnitTrack& track = store_.Track(k);
  const auto j = static_cast<std::size_t>(pointIndex);
  if (pointIndex == kNoPoint || j >= track.Points().size()) return std::nullopt;
  const DataPoint& point = track.Points()[j];
  const Millis utc = DecodePackedTime(point.time).value_or(0);
  return PointFacts{ToLocalTime(utc, utcOffsetMinutes_), point.status, track.Miles()[j]};
}

LengthUnit Client::Length() const {
  return choices_.unitOfMeasure.Value() == 0 ? LengthUnit::kMiles : LengthUnit::kKilometers;
}

void Client::PickerGotFocus(int i) {
  pickers_.GotFocus(i);
  tmrDTP_->SetEnabled(false);
  ShowPickers();
}

void Client::PickerLostFocus(int i) {
  if (closing_) return;
  pickers_.LostFocus(i);
  tmrDTP_->SetEnabled(true);
  ShowPickers();
  focus_.Return();
}

void Client::PickerChanged(int i, Millis value) {
  pickers_.Changed(i, value);
  ShowPickers();
}

void Client::PickerDroppedDown(int i) { pickers_.DroppedDown(i); }

void Client::PickerClosedUp(int i) {
  const bool changed = pickers_.ClosedUp(i);
  ShowPickers();
  if (changed) ports_.view.MovePointerToReloadButton();
}

void Client::ReloadClicked() {
  TakeWindowFromPickers();
  MapReload();
  pickers_.Reloaded();
  ShowPickers();
}

void Client::OnPickerGraceTick() {
  tmrDTP_->SetEnabled(false);
  pickers_.GraceEnded();
  ShowPickers();
}

void Client::TakeWindowFromPickers() { window_ = pickers_.Window(); }

void Client::ShowPickers() {
  ports_.view.ShowPicker(0, pickers_.Value(0), pickers_.Format(0), pickers_.AreShown());
  ports_.view.ShowPicker(1, pickers_.Value(1), pickers_.Format(1), pickers_.IsEndVisible());
  ports_.view.ShowReloadButton(pickers_.IsReloadVisible());
  ports_.view.ShowCaption(pickers_.AreShown());
}

// Loads another window, if there is one. What was being changed in the pickers goes.
bool Client::NavigateTo(const std::optional<TimeWindow>& window) {
  if (!window) return false;
  pickers_.SetWindow(*window);
  TakeWindowFromPickers();
  for (const int i : {0, 1}) {
    if (!(pickers_.PickerFocusMask() & 1 << i)) pickers_.SetPickerFormat(i);
  }
  pickers_.HideReload();
  MapReload();
  ShowPickers();
  return true;
}

void Client::ReturnToCurrentDay() {
  const auto choice = static_cast<StartupChoice>(choices_.onStartup.Value());
  const Millis now = NowLocal() / kSecond * kSecond;
  NavigateTo(WindowForChoice(choice, now).value_or(pickers_.Window()));
}

}  // namespace pallomir
