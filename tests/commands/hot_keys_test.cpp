#include "commands/hot_keys.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace pallomir {
namespace {

// What each of them does is tried where it is done.
TEST(HotKeys, OnlyTheKeysOfTheTableDoAnything) {
  using enum Command;
  int count = 0;
  for (int modifiers = -1; modifiers <= 15; ++modifiers)
    for (int key = -128; key < 128; ++key)
      count += FindKeyCommand(modifiers, static_cast<char>(key), 12).has_value();
  EXPECT_EQ(count, 24 + 4 * 9) << "nine digits, with and without Shift and Ctrl";
  EXPECT_EQ(FindKeyCommand(kNoModifier, '0', 12), GivenCommand{kAllUnits});
  EXPECT_EQ(FindKeyCommand(kShift | kCtrl, '7', 12), (GivenCommand{kTimeForward, 7}));
  EXPECT_TRUE(FindKeyCommand(kShift, '3', 3));
  for (const int modifiers : {+kNoModifier, +kShift})
    EXPECT_FALSE(FindKeyCommand(modifiers, '4', 3)) << "a unit that is not there";
  EXPECT_TRUE(FindKeyCommand(kCtrl, '4', 3)) << "periods are";
  for (const char* unknown : {"", "a", "AB", "ctrl"}) EXPECT_EQ(KeyDescription(unknown), "") << unknown;
}

TEST(HotKeys, TheListHasALineForEachOfThem) {
  const KeyListText list = KeyList();
  EXPECT_EQ(
      list.hotKeys,
      "1-9\r\n<Shift>1-9\r\n<Ctrl>1-9\r\n<Ctrl><Shift>\r\nA\r\nC\r\nF\r\nH\r\nI\r\nM\r\nN\r\nO\r\nP\r\nR\r\nS"
      "\r\n<Ctrl>T\r\nV\r\n<Ctrl>Z\r\nX\r\n]\r\n[");
  EXPECT_TRUE(list.functions.starts_with("Display only mobile unit #N \r\nToggle display of"))
      << list.functions;
  EXPECT_EQ(std::ranges::count(list.functions, '\n'), std::ranges::count(list.hotKeys, '\n'));
}

}  // namespace
}  // namespace pallomir
