#include "tracking/data_age.h"

#include <gtest/gtest.h>

#include "tracking/connection_lamp.h"

namespace pallomir {
namespace {

constexpr CivilTime kNoon{2026, 11, 22, 12, 0, 0};

DataPoint At(Millis offset, std::uint32_t flag = 0) {
  return {*EncodePackedTime(ToMillis(kNoon) + offset) | flag, 1, 1, 0};
}

TEST(DataAge, CountsFromTheNewestPointThatIsNotOfTheFuture) {
  using Points = std::vector<DataPoint>;
  const std::tuple<Points, Points, const char*, std::size_t> cases[] = {
      {{}, {}, "Pallomir  0 Data Points", 0},
      {{At(-4 * kMinute - 17 * kSecond)}, {}, "Pallomir  00:04:17  1 Data Points", 0},
      {{At(-50 * kHour)}, {At(-26 * kHour)}, "Pallomir 1 02:00:00  2 Data Points", 0},
      {{At(-kDay)}, {}, "Pallomir 1 00:00:00  1 Data Points", 0},
      {{At(-kDay + kSecond)}, {}, "Pallomir  23:59:59  1 Data Points", 0},
      {{At(-kHour), At(kMinute)}, {}, "Pallomir  00:00:00  2 Data Points", 0},
      {{At(-kHour), At(kMinute + kSecond)}, {}, "Pallomir  01:00:00  2 Data Points", 1},
      {{At(-kHour), At(kHour), At(2 * kHour)},
       {At(-2 * kHour), At(kDay, kPackedTimeFlag)},
       "Pallomir  01:00:00  5 Data Points",
       3},
      {{At(kHour)}, {}, "Pallomir  1 Data Points", 1},
      {{At(-2 * kHour, kPackedTimeFlag), At(-kHour)}, {}, "Pallomir  01:00:00  2 Data Points", 0},
  };
  for (const auto& [first, second, caption, datedLater] : cases) {
    PointStore store;
    store.Reset(2);
    store.Merge(1, first);
    store.Merge(2, second);
    const NewestData newest = NewestDataAt(store, ToMillis(kNoon));
    EXPECT_EQ(AgeCaption(newest, store.PointCount(), ToMillis(kNoon)), caption);
    EXPECT_EQ(newest.datedLater, datedLater) << caption;
  }
}

TEST(ConnectionLamp, SaysWhatHappenedAndWhichKeyHelps) {
  using State = ServerConnection::State;
  const std::tuple<LampFacts, LampColour, const char*, const char*> cases[] = {
      {{State::kStreaming, true, false, false, 0}, LampColour::kQuiet, "No data yet", ""},
      {{State::kStreaming, true, false, false, 5}, LampColour::kGreen, "Connected", ""},
      {{State::kStreaming, true, true, true, 5}, LampColour::kAmber, "New data waits: press F", ""},
      {{State::kStreaming, true, false, true, 5}, LampColour::kAmber, "Not drawn yet: press F", ""},
      {{State::kProbing, true, false, false, 5}, LampColour::kAmber, "Looking for the server", ""},
      {{State::kReporting, true, false, false, 5}, LampColour::kQuiet, "Not connected", ""},
      {{State::kIdle, true, false, false, 5},
       LampColour::kQuiet,
       "Not connected: no data comes.\nPress R to try again.",
       "Not connected: press R"},
      {{State::kClosedByServer, true, true, false, 5},
       LampColour::kRed,
       "The server has closed the connection: no new data comes.\nPress R to load the data again.\n"
       "New data waits: press F",
       "Closed by the server: press R"},
      {{State::kClosedByServer, false, true, true, 0}, LampColour::kQuiet, "No mobile units enabled", ""},
      {{State::kStreaming, true, false, false, 5, 1, "Starting"},
       LampColour::kGreen,
       "Connected\n1 data point is dated later than now\nStarting",
       ""},
      {{State::kStreaming, true, false, false, 5, 2},
       LampColour::kGreen,
       "Connected\n2 data points are dated later than now",
       ""},
  };
  for (const auto& [facts, colour, tip, word] : cases) {
    const LampMessage lamp = LampFor(facts);
    EXPECT_EQ(lamp.colour, colour) << tip;
    EXPECT_EQ(lamp.tip, tip);
    EXPECT_EQ(lamp.word, word) << tip;
  }
}

}  // namespace
}  // namespace pallomir
