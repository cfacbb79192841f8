#include "journal/zone_schedule.h"

#include <gtest/gtest.h>

namespace pallomir {
namespace {

// 22 November 2026 is a Sunday.
Millis At(int day, int hour, int minute = 0) { return ToMillis({2026, 11, day, hour, minute}); }

TEST(ZoneSchedule, DaysAndHours) {
  const struct {
    const char* days;
    const char* start;
    const char* end;
    std::vector<Millis> within;
    std::vector<Millis> outside;
  } cases[] = {
      {"SMTWTFS", "0000", "0000", {At(22, 0), At(25, 23, 59)}, {}},
      {"-M-----", "0000", "0000", {At(23, 0), At(23, 23, 59)}, {At(22, 23, 59), At(24, 0)}},
      // 8:00 to 17:30: the start is the ninth of the list, the end nine hours on.
      {"SMTWTFS", "0900", "0930", {At(23, 8), At(23, 17, 29)}, {At(23, 7, 59), At(23, 17, 30)}},
      // 10:15 PM to 6:05 AM of the next day; the night belongs to Friday.
      {"-----F-",
       "2315",
       "0805",
       {At(27, 22, 15), At(28, 0), At(28, 6, 4)},
       {At(27, 6), At(27, 22, 14), At(28, 6, 5), At(28, 22, 15)}},
      // The end before the start in the same hour, and upon it: the next day's.
      {"SMTWTFS", "0930", "0015", {At(23, 8, 30), At(24, 8, 14)}, {At(24, 8, 15), At(24, 8, 29)}},
      {"---W---", "0930", "0030", {At(25, 8, 30), At(26, 8, 29)}, {At(25, 8, 29), At(26, 8, 30)}},
      // No times of the dialog: any time.
      {"S------", "99xx", "0100", {At(22, 3)}, {At(23, 3)}},
  };
  for (const auto& [days, start, end, within, outside] : cases) {
    const ZoneSchedule schedule({"", "Depot", days, start, end});
    for (const Millis time : within) EXPECT_TRUE(schedule.Includes(time)) << start << ' ' << IsoText(time);
    for (const Millis time : outside) EXPECT_FALSE(schedule.Includes(time)) << start << ' ' << IsoText(time);
  }
}

}  // namespace
}  // namespace pallomir
