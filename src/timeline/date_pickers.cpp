#include "timeline/date_pickers.h"

#include <algorithm>

namespace pallomir {

std::string PickerFormat(Millis value) {
  const CivilTime t = ToCivil(value);
  std::string format = "ddd,MMMd";
  if (t.hour || t.minute || t.second) format += ", h";
  if (t.minute || t.second) format += ":mm";
  if (t.second) format += ":ss";
  if (t.hour || t.minute || t.second) format += " tt";
  return format;
}

void DatePickers::SetWindow(const TimeWindow& window) {
  pickers_[0].value = window.start;
  pickers_[1].value = window.end;
}

void DatePickers::SetPickerFormat(int i) { picker(i).format = PickerFormat(Value(i)); }

void DatePickers::ShowAll(bool shown) {
  shown_ = shown;
  grace_ = grace_ || shown;
}

bool DatePickers::IsEndVisible() const {
  return shown_ && (focusMask_ != 0 || grace_ || Window().Length() != kDay);
}

void DatePickers::GotFocus(int i) {
  focusMask_ |= 1 << i;
  picker(i).format = kEditingFormat;
  grace_ = true;
}

void DatePickers::LostFocus(int i) {
  focusMask_ &= ~(1 << i);
  droppedDown_ = false;
  grace_ = true;
  SetPickerFormat(i);
}

void DatePickers::Changed(int i, Millis value) {
  picker(i).value = value;
  changed_ = true;
  if (droppedDown_) return;
  reloadVisible_ = true;
  if (i == 0) StartMoved();
}

void DatePickers::DroppedDown(int) {
  droppedDown_ = true;
  changed_ = false;
}

bool DatePickers::ClosedUp(int i) {
  droppedDown_ = false;
  if (!changed_) return false;
  reloadVisible_ = true;
  if (i == 0) StartMoved();
  return true;
}

void DatePickers::Reloaded() {
  reloadVisible_ = false;
  if (Window().Length() == kDay && focusMask_ == 0) grace_ = false;
}

void DatePickers::StartMoved() {
  pickers_[1].value = std::min(pickers_[0].value + kDay, LastMoment());
  SetPickerFormat(1);
}

}  // namespace pallomir
