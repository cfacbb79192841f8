#include "station/unit_lists.h"

#include <gtest/gtest.h>

namespace pallomir::station {
namespace {

TEST(UnitLists, ListUnitsForAReaderAndForTheClient) {
  const StoredUnit units[] = {{"00000000000A", "Van"}, {"00000000000B", ""}};
  EXPECT_EQ(UnitLines(units), "00000000000A Van\n00000000000B \n");
  EXPECT_EQ(ClientUnitList(units), "X00000000000AVan~X00000000000B~");
}

}  // namespace
}  // namespace pallomir::station
