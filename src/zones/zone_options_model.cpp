#include "zones/zone_options_model.h"

#include <algorithm>
#include <optional>

#include "base/number_format.h"

namespace pallomir {
namespace {

constexpr std::string_view kDayLetters = "SMTWTFS";
constexpr int kHours = 24;
constexpr int kMinuteStep = 5;
constexpr int kMinuteChoices = 60 / kMinuteStep;

// "12 AM", " 1 AM" ... "11 PM", and the same of the next day.
std::vector<std::string> TwoDays() {
  std::vector<std::string> hours;
  for (int hour = 0; hour < 2 * kHours; ++hour) {
    const int onDial = (hour + 11) % 12 + 1;
    hours.push_back((onDial < 10 ? " " : "") + std::to_string(onDial) + (hour % kHours < 12 ? " AM" : " PM") +
                    (hour < kHours ? "" : " Next Day"));
  }
  return hours;
}

const std::vector<std::string>& Hours() {
  static const std::vector<std::string> hours = TwoDays();
  return hours;
}

struct StoredTime {
  int hour = 0;
  int minute = 0;  // in steps
};

// Nothing where the text is no time of the lists.
std::optional<StoredTime> ReadTime(const std::string& text, int lastHour) {
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  if (text.size() != 4 || !std::ranges::all_of(text, isDigit)) return std::nullopt;
  const int hour = std::stoi(text.substr(0, 2)), minute = std::stoi(text.substr(2));
  if (hour > lastHour || minute >= 60) return std::nullopt;
  return StoredTime{hour, minute / kMinuteStep};
}

std::string WriteTime(int hour, int minute) {
  return FormatInteger(hour, 2) + FormatInteger(minute * kMinuteStep, 2);
}

}  // namespace

ZoneOptionsModel::ZoneOptionsModel() { options_.Description = kZoneNamePlaceholder; }

ZoneOptionsModel::ZoneOptionsModel(const ZoneOptions& options) : options_(options) {
  for (std::size_t day = 0; day < kDays; ++day)
    IncludeDay(day, day >= options.DaysOfWeek.size() || options.DaysOfWeek[day] != '-');
  const auto start = ReadTime(options.StartTime, kHours);
  const auto end = ReadTime(options.EndTime, kHours - 1);
  if (!start || !end || start->hour == 0) return;
  startHour_ = start->hour;
  startMinute_ = start->minute;
  endHour_ = end->hour;
  endMinute_ = end->minute;
}

void ZoneOptionsModel::SetDescription(std::string_view text) {
  options_.Description.clear();
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    constexpr unsigned char kBlank = 0x20, kDelete = 0x7F;
    if (byte >= kBlank && byte != kDelete) options_.Description += c == '"' ? '\'' : c;
  }
}

void ZoneOptionsModel::IncludeDay(std::size_t day, bool included) {
  options_.DaysOfWeek.resize(kDays, '-');
  options_.DaysOfWeek[day] = included ? kDayLetters[day] : '-';
}

std::span<const std::string> ZoneOptionsModel::StartHours() {
  static const std::vector<std::string> hours = [] {
    std::vector<std::string> entries{"Any Time"};
    entries.insert(entries.end(), Hours().begin(), Hours().begin() + kHours);
    return entries;
  }();
  return hours;
}

std::span<const std::string> ZoneOptionsModel::Minutes() {
  static const std::vector<std::string> minutes = [] {
    std::vector<std::string> entries;
    for (int i = 0; i < kMinuteChoices; ++i) entries.push_back(":" + FormatInteger(i * kMinuteStep, 2));
    return entries;
  }();
  return minutes;
}

std::vector<std::string> ZoneOptionsModel::EndHours() const {
  if (IsAnyTime()) return {};
  const auto first = Hours().begin() + startHour_ - 1;
  return {first, first + kHours};
}

void ZoneOptionsModel::ChooseStartHour(int index) {
  if (index < 0 || index > kHours || index == startHour_) return;
  startHour_ = index;
  startMinute_ = endMinute_ = 0;
  endHour_ = IsAnyTime() ? 0 : 1;
}

void ZoneOptionsModel::ChooseStartMinute(int index) {
  if (!IsAnyTime() && index >= 0 && index < kMinuteChoices) startMinute_ = index;
}

void ZoneOptionsModel::ChooseEndHour(int index) {
  if (!IsAnyTime() && index >= 0 && index < kHours) endHour_ = index;
}

void ZoneOptionsModel::ChooseEndMinute(int index) {
  if (!IsAnyTime() && index >= 0 && index < kMinuteChoices) endMinute_ = index;
}

bool ZoneOptionsModel::IsComplete() const {
  const bool hasDay = options_.DaysOfWeek.find_first_not_of('-') != std::string::npos;
  return hasDay && !options_.Description.empty() && options_.Description != kZoneNamePlaceholder;
}

ZoneOptions ZoneOptionsModel::Options() const {
  ZoneOptions options = options_;
  options.StartTime = IsAnyTime() ? "0000" : WriteTime(startHour_, startMinute_);
  options.EndTime = IsAnyTime() ? "0000" : WriteTime(endHour_, endMinute_);
  return options;
}

}  // namespace pallomir
