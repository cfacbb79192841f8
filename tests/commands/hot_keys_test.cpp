#include "commands/hot_keys.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

namespace pallomir {
namespace {

constexpr int kBoth = kShift | kCtrl;

// Every key that does something, with all digits reaching a unit. What isn't here must do nothing.
std::map<std::pair<int, char>, GivenCommand> Expected() {
  using enum Command;
  std::map<std::pair<int, char>, GivenCommand> rows = {
      {{kNoModifier, 'A'}, {kAllUnits}},
      {{kNoModifier, '0'}, {kAllUnits}},
      {{kShift, '0'}, {kAllUnits}},
      {{kNoModifier, 'C'}, {kStreetView}},
      {{kNoModifier, 'V'}, {kPanorama}},
      {{kNoModifier, 'F'}, {kFitAll}},
      {{kNoModifier, 'R'}, {kReload}},
      {{kNoModifier, 'N'}, {kNearby}},
      {{kNoModifier, 'P'}, {kMaxSpeed}},
      {{kNoModifier, 'M'}, {kMapType, 1}},
      {{kNoModifier, 'S'}, {kMapType, 2}},
      {{kNoModifier, 'H'}, {kMapType, 3}},
      {{kNoModifier, 'T'}, {kMapType, 4}},
      {{kNoModifier, '['}, {kTimeBack, 1}},
      {{kNoModifier, ']'}, {kTimeForward, 1}},
      {{kNoModifier, 'I'}, {kTimeZoomIn}},
      {{kNoModifier, 'O'}, {kTimeZoomOut}},
      {{kNoModifier, 'X'}, {kCurrentDay}},
      {{kCtrl, 'M'}, {kMapData}},
      {{kCtrl, 'T'}, {kTrackingData}},
      {{kCtrl, 'Z'}, {kZones}},
  };
  for (int n = 1; n <= 9; ++n) {
    const char key = static_cast<char>('0' + n);
    rows[{kNoModifier, key}] = {kOnlyUnit, n};
    rows[{kShift, key}] = {kToggleUnit, n};
    rows[{kCtrl, key}] = {kTimeBack, n};
    rows[{kBoth, key}] = {kTimeForward, n};
  }
  return rows;
}

TEST(HotKeys, EachKeyDoesWhatItDoesAndAllOthersNothing) {
  const auto expected = Expected();
  for (int modifiers = -1; modifiers <= 15; ++modifiers) {
    for (int key = -128; key < 128; ++key) {
      const auto row = expected.find({modifiers, static_cast<char>(key)});
      const auto found = FindKeyCommand(modifiers, static_cast<char>(key), 12);
      if (row == expected.end()) {
        EXPECT_FALSE(found) << modifiers << " " << key;
      } else {
        EXPECT_EQ(found, row->second) << modifiers << " " << static_cast<char>(key);
      }
    }
  }
  EXPECT_TRUE(FindKeyCommand(kShift, '3', 3));
  for (const int modifiers : {+kNoModifier, +kShift})
    EXPECT_FALSE(FindKeyCommand(modifiers, '4', 3)) << "a unit that is not there";
  EXPECT_TRUE(FindKeyCommand(kCtrl, '4', 3)) << "periods are";
  for (const char* unknown : {"", "a", "AB", "ctrl"}) EXPECT_EQ(KeyDescription(unknown), "") << unknown;
}

TEST(HotKeys, WhileDrawingSomeKeysMeanSomethingElse) {
  using enum Command;
  using namespace special_key;
  const std::map<std::pair<int, char>, GivenCommand> expected = {
      {{kNoModifier, kEnter}, {kSetCorner, 0}},
      {{kAlt, kEnter}, {kSetCorner, 1}},
      {{kNoModifier, kEscape}, {kCancelZone}},
      {{kCtrl, 'Z'}, {kUndoCorner}},
      {{kNoModifier, kLeft}, {kMoveCrosshair, 0}},
      {{kNoModifier, kDown}, {kMoveCrosshair, 3}},
      {{kShift, kUp}, {kMoveCrosshair, 5}},
      {{kCtrl, kRight}, {kMoveCrosshair, 10}},
      {{kNoModifier, kPageUp}, {kGoToCorner, 0}},
      {{kNoModifier, kPageDown}, {kGoToCorner, 1}},
      {{kNoModifier, 'Z'}, {}},
      {{kNoModifier, 'R'}, {}},
      {{kShift, kEnter}, {}},
  };
  for (const auto& [key, given] : expected)
    EXPECT_EQ(FindDrawingCommand(key.first, key.second).value_or(GivenCommand{}), given)
        << key.first << " " << int{key.second};
}

TEST(HotKeys, TheListHasItsLinesWithTheirTrailingBlanks) {
  const KeyListText list = KeyList();
  EXPECT_EQ(
      list.hotKeys,
      "1-9\r\n<Shift>1-9\r\n<Ctrl>1-9\r\n<Ctrl><Shift>\r\nA\r\nC\r\nF\r\nH\r\nI\r\nM\r\nN\r\nO\r\nP\r\nR\r\nS"
      "\r\n<Ctrl>T\r\nV\r\n<Ctrl>Z\r\nX\r\n]\r\n[");
  EXPECT_EQ(list.functions,
            "Display only mobile unit #N \r\n"
            "Toggle display of mobile unit #N\r\n"
            "Move time interval back N periods \r\n"
            "Move time interval forward N periods \r\n"
            "Display all mobile units \r\n"
            "Toggle StreetView map overlay\r\n"
            "Fit map to all mobile units\r\n"
            "Display \"hybrid view\" of map \r\n"
            "Zoom in (in time) to 1/3 the interval\r\n"
            "Display \"map view\" of map \r\n"
            "Display nearby datapoints table \r\n"
            "Zoom out (in time) to 3x the interval\r\n"
            "Display max speed table \r\n"
            "Reload current data\r\n"
            "Display \"satellite view\" of map \r\n"
            "Toggle tracking data visibility \r\n"
            "Toggle StreetView 360\xC2\xBA Panorama\r\n"
            "Toggle alert zones visibility \r\n"
            "Return to current day, 24-hr display \r\n"
            "Move time interval forward 1 period \r\n"
            "Move time interval back 1 period ");
}

}  // namespace
}  // namespace pallomir
