#include <gmock/gmock.h>

#include "zones/zone_options_model.h"

namespace pallomir {
namespace {

using testing::IsEmpty;

TEST(ZoneOptions, ANewZoneHasAllDaysAndAnyTimeButNoName) {
  ZoneOptionsModel model;
  EXPECT_EQ(model.Description(), kZoneNamePlaceholder);
  EXPECT_FALSE(model.IsComplete());
  EXPECT_THAT(model.EndHours(), IsEmpty());
  model.SetDescription("A \"big\"\t yard\x7F\n");
  EXPECT_TRUE(model.IsComplete());
  const ZoneOptions expected{"", "A 'big' yard", "SMTWTFS", "0000", "0000"};
  EXPECT_EQ(model.Options(), expected);
  for (std::size_t day = 0; day < ZoneOptionsModel::kDays; ++day) model.IncludeDay(day, false);
  EXPECT_FALSE(model.IsComplete());
  model.IncludeDay(4, true);
  EXPECT_EQ(model.Options().DaysOfWeek, "----T--");
  EXPECT_TRUE(model.IsComplete());
  model.SetDescription("");
  EXPECT_FALSE(model.IsComplete());
}

TEST(ZoneOptions, Lists) {
  const auto hours = ZoneOptionsModel::StartHours(), minutes = ZoneOptionsModel::Minutes();
  ASSERT_EQ(hours.size(), 25u);
  EXPECT_EQ(hours[0] + '|' + hours[1] + '|' + hours[2] + '|' + hours[13] + '|' + hours[24],
            "Any Time|12 AM| 1 AM|12 PM|11 PM");
  ASSERT_EQ(minutes.size(), 12u);
  EXPECT_EQ(minutes[11], ":55");
  ZoneOptionsModel model;
  model.ChooseStartHour(24);  // 11 PM
  const auto ends = model.EndHours();
  ASSERT_EQ(ends.size(), 24u);
  EXPECT_EQ(ends[0] + '|' + ends[1] + '|' + ends[9] + '|' + ends[23],
            "11 PM|12 AM Next Day| 8 AM Next Day|10 PM Next Day");
}

TEST(ZoneOptions, AChosenStartEndsAnHourLater) {
  ZoneOptionsModel model;
  model.ChooseEndHour(3);  // nothing to choose from yet
  model.ChooseStartHour(8);
  EXPECT_EQ(model.Options().StartTime + model.Options().EndTime, "08000100");
  model.ChooseStartMinute(6);
  model.ChooseEndHour(9);
  model.ChooseEndMinute(11);
  EXPECT_EQ(model.Options().StartTime + model.Options().EndTime, "08300955");
  model.ChooseStartHour(8);  // the same again changes nothing
  for (const int none : {-1, 24}) model.ChooseEndHour(none);
  for (const int none : {-1, 12}) {
    model.ChooseStartMinute(none);
    model.ChooseEndMinute(none);
  }
  model.ChooseStartHour(25);
  EXPECT_EQ(model.Options().StartTime + model.Options().EndTime, "08300955");
  model.ChooseStartHour(0);
  EXPECT_EQ(model.Options().StartTime + model.Options().EndTime, "00000000");
  EXPECT_TRUE(model.IsAnyTime());
}

TEST(ZoneOptions, StoredTimesThatNameNoEntryCountAsAnyTime) {
  const std::array<const char*, 3> cases[] = {{"0100", "0000", "01000000"}, {"2455", "2355", "24552355"},
                                              {"0813", "0059", "08100055"}, {"0000", "0100", "00000000"},
                                              {"2500", "0100", "00000000"}, {"0100", "2400", "00000000"},
                                              {"0160", "0100", "00000000"}, {"0100", "01 0", "00000000"},
                                              {"", "", "00000000"},         {"01000", "0100", "00000000"}};
  for (const auto& [start, end, kept] : cases) {
    const ZoneOptionsModel model(ZoneOptions{"kept", "Yard", "S-T", start, end});
    const ZoneOptions options = model.Options();
    EXPECT_EQ(options.StartTime + options.EndTime, kept) << start << ' ' << end;
    EXPECT_EQ(options.DaysOfWeek, "S-TWTFS");  // letters by place; missing ones are included
    EXPECT_EQ(options.Spare, "kept");
  }
}

}  // namespace
}  // namespace pallomir
