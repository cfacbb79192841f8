#include "station/wire/data_request.h"

#include <gtest/gtest.h>

namespace pallomir::station {
namespace {

const std::string kWindow = "~2026-11-22 00:00:00~2026-11-23 23:59:59~~";

TEST(DataRequest, ReadsUnitsAndWindow) {
  const auto request = ParseDataRequest("0013A20040B10013A20040B20013A20040B1" + kWindow);
  ASSERT_TRUE(request);
  EXPECT_EQ(request->unitIds, (std::vector<std::string>{"0013A20040B1", "0013A20040B2"}));
  EXPECT_EQ(request->window.from, ToMillis({2026, 11, 22}));
  EXPECT_EQ(request->window.until, ToMillis({2026, 11, 23, 23, 59, 59}));
}

TEST(DataRequest, TakesTheLongestAndRefusesOneMore) {
  std::string ids;
  for (std::size_t i = 0; i < kMaxUnitsPerRequest; ++i) ids += "0013A20040B1";
  EXPECT_EQ((ids + kWindow).size(), kMaxDataRequestSize);
  EXPECT_TRUE(ParseDataRequest(ids + kWindow));
  EXPECT_FALSE(ParseDataRequest(ids + "0013A20040B1" + kWindow));
}

TEST(DataRequest, RefusesWhatIsMalformed) {
  const std::string id = "0013A20040B1";
  const std::string malformed[] = {
      "",
      "~~",
      kWindow,                                            // no unit
      "D" + id + kWindow,                                 // the locator's form
      id + "0" + kWindow,                                 // an ID cut short
      "0013a20040b1" + kWindow,                           // lower case
      id + "~2026-11-22 00:00:00~~",                      // one time
      id + "~2026-11-22~2026-11-23~~",                    // no time of day
      id + "~2026-11-31 00:00:00~2026-12-01 00:00:00~~",  // no such day
      id + "~2026-11-22 00:00:00~2026-11-23 23:59:59~",   // no end
      id + "~2026-11-22 00:00:00~2026-11-23 23:59:59~~ ",
      id + " 2026-11-22 00:00:00~2026-11-23 23:59:59~~",
      id + "~2026-11-22 00:00:00 2026-11-23 23:59:59~~",
  };
  for (const std::string& text : malformed) EXPECT_FALSE(ParseDataRequest(text)) << text;
}

}  // namespace
}  // namespace pallomir::station
