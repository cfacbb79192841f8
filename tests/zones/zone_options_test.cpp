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
  const auto hours = ZoneOptionsModel::StartHours();
  ASSERT_EQ(hours.size(), 25u);
  EXPECT_EQ(hours[0], "Any Time");
  EXPECT_EQ(hours[1], "12 AM");
  EXPECT_EQ(hours[2], " 1 AM");
  EXPECT_EQ(hours[13], "12 PM");
  EXPECT_EQ(hours[24], "11 PM");
  EXPECT_EQ(ZoneOptionsModel::Minutes().size(), 12u);
  EXPECT_EQ(ZoneOptionsModel::Minutes()[11], ":55");

  ZoneOptionsModel model;
  model.ChooseStartHour(24);  // 11 PM
  ASSERT_EQ(model.EndHours().size(), 24u);
  EXPECT_EQ(model.EndHours()[0], "11 PM");
  EXPECT_EQ(model.EndHours()[1], "12 AM Next Day");
  EXPECT_EQ(model.EndHours()[9], " 8 AM Next Day");
  EXPECT_EQ(model.EndHours()[23], "10 PM Next Day");
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
  struct Case {
    const char* start;
    const char* end;
    const char* kept;
  };
  for (const Case& c : {Case{"0100", "0000", "01000000"},
                        {"2455", "2355", "24552355"},
                        {"0813", "0059", "08100055"},
                        {"0000", "0100", "00000000"},
                        {"2500", "0100", "00000000"},
                        {"0100", "2400", "00000000"},
                        {"0160", "0100", "00000000"},
                        {"0100", "01 0", "00000000"},
                        {"", "", "00000000"},
                        {"01000", "0100", "00000000"}}) {
    const ZoneOptionsModel model(ZoneOptions{"kept", "Yard", "S-T", c.start, c.end});
    const ZoneOptions options = model.Options();
    EXPECT_EQ(options.StartTime + options.EndTime, c.kept) << c.start << ' ' << c.end;
    EXPECT_EQ(options.DaysOfWeek, "S-TWTFS");  // letters by place; missing ones are included
    EXPECT_EQ(options.Spare, "kept");
  }
}

}  // namespace
}  // namespace pallomir
