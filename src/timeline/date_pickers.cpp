#include "timeline/date_pickers.h"

#include "base/number_format.h"

namespace pallomir {
namespace {

constexpr const char* kDays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr const char* kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                   "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

std::string FieldText(Millis value, char letter, int count) {
  const CivilTime t = ToCivil(value);
  const int hour = t.hour % 12 == 0 ? 12 : t.hour % 12;
  switch (letter) {
    case 'd':
      return count >= 3 ? kDays[DayOfWeek(value)] : FormatInteger(t.day, count);
    case 'M':
      return count >= 3 ? kMonths[t.month - 1] : FormatInteger(t.month, count);
    case 'y':
      return FormatInteger(t.year % 100, 2);
    case 'h':
      return FormatInteger(hour, count);
    case 'm':
      return FormatInteger(t.minute, count);
    case 's':
      return FormatInteger(t.second, count);
    case 't':
      return t.hour < 12 ? "AM" : "PM";
    default:
      return std::string(static_cast<std::size_t>(count), letter);
  }
}

}  // namespace

std::string PickerFormat(Millis value) {
  const CivilTime t = ToCivil(value);
  std::string format = "ddd,MMMd";
  if (t.hour || t.minute || t.second) format += ", h";
  if (t.minute || t.second) format += ":mm";
  if (t.second) format += ":ss";
  if (t.hour || t.minute || t.second) format += " tt";
  return format;
}

std::string PickerText(Millis value, const std::string& format) {
  std::string text;
  for (std::size_t at = 0; at < format.size();) {
    std::size_t end = format.find_first_not_of(format[at], at);
    if (end == std::string::npos) end = format.size();
    text += FieldText(value, format[at], static_cast<int>(end - at));
    at = end;
  }
  return text;
}

void DatePickers::SetWindow(const TimeWindow& window) {
  pickers_[0].value = window.start;
  pickers_[1].value = window.end;
}

void DatePickers::SetPickerFormat(int i) { picker(i).format = PickerFormat(Value(i)); }

bool DatePickers::IsEndVisible() const { return focusMask_ != 0 || grace_ || Window().Length() != kDay; }

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
  pickers_[1].value = pickers_[0].value + kDay;
  SetPickerFormat(1);
}

}  // namespace pallomir
