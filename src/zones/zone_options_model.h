#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "zones/zone_tree.h"

namespace pallomir {

/// Shown in grey until the user has given a new zone its name.
inline constexpr char kZoneNamePlaceholder[] = "Enter Zone Description Here";

/// The choices of the zone options dialog, without its widgets.
///
/// Times are kept as the positions of the lists: a start hour counts in StartHours(), where 0 is "Any Time";
/// an end hour counts in EndHours(), the 24 hours that begin with the start hour; minutes are steps of five.
class ZoneOptionsModel {
 public:
  static constexpr std::size_t kDays = 7;

  /// For a new zone.
  ZoneOptionsModel();
  /// For a zone that there is. Times that name no entry of the lists count as any time.
  explicit ZoneOptionsModel(const ZoneOptions& options);

  const std::string& Description() const { return options_.Description; }
  /// What the user typed. Double quotes become single ones, control characters are left out: the zone file
  /// has no form for them.
  void SetDescription(std::string_view text);

  bool IsDayIncluded(std::size_t day) const { return options_.DaysOfWeek[day] != '-'; }
  void IncludeDay(std::size_t day, bool included);

  /// "Any Time", "12 AM" ... "11 PM".
  static std::span<const std::string> StartHours();
  /// ":00" ... ":55".
  static std::span<const std::string> Minutes();
  /// From the start hour on, past midnight with " Next Day"; empty at any time.
  std::vector<std::string> EndHours() const;

  bool IsAnyTime() const { return startHour_ == 0; }
  int StartHour() const { return startHour_; }
  int StartMinute() const { return startMinute_; }
  int EndHour() const { return endHour_; }
  int EndMinute() const { return endMinute_; }

  /// Another start hour begins at ":00" and ends an hour later.
  void ChooseStartHour(int index);
  void ChooseStartMinute(int index);
  void ChooseEndHour(int index);
  void ChooseEndMinute(int index);

  /// Whether the zone can be drawn: it has a name and a day.
  bool IsComplete() const;

  /// The choices in the zone file's form.
  ZoneOptions Options() const;

 private:
  ZoneOptions options_;  // the times stand below
  int startHour_ = 0;
  int startMinute_ = 0;
  int endHour_ = 0;
  int endMinute_ = 0;
};

}  // namespace pallomir
