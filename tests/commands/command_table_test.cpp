#include "commands/command_table.h"

#include <gmock/gmock.h>

#include <fstream>
#include <set>
#include <sstream>

#include "commands/hot_keys.h"
#include "commands/menus.h"

namespace pallomir {
namespace {

using testing::HasSubstr;

TEST(CommandTable, EveryEntryIsReachedByItsCommandAndByItsName) {
  MenuModel menus;
  BuildMenus(menus);
  std::set<std::pair<std::string, int>> names;
  for (const CommandRow& row : CommandTable()) {
    if (!*row.caption) continue;
    SCOPED_TRACE(row.name);
    EXPECT_TRUE(names.emplace(row.name, row.index).second);
    EXPECT_EQ(menus.At(row.name, row.index).caption, row.caption);
    if (row.command != Command::kSeparator) {
      EXPECT_EQ(&menus.At(row.command, row.index), &menus.At(row.name, row.index));
    }
  }
}

TEST(CommandTable, AnUnknownEntryIsAFaultButNoCrashOfARelease) {
  MenuModel menus;
  BuildMenus(menus);
  EXPECT_DEBUG_DEATH(menus.At("mnuNone").checked = true, "no such menu entry");
  EXPECT_DEBUG_DEATH(menus.At(Command::kMapType, 9).checked = true, "no such menu entry");
  EXPECT_EQ(menus.Find("mnuNone"), nullptr);
}

TEST(CommandTable, EntriesShowTheirKeys) {
  MenuModel menus;
  BuildMenus(menus);
  const std::tuple<const char*, int, const char*> cases[] = {{"mnuViewMapData", 0, "Ctrl+M"},
                                                             {"mnuViewMapTypeArray", 4, "T"},
                                                             {"mnuOptionsMUArray", 0, ""},
                                                             {"mnuPopupExit", 0, ""}};
  for (const auto& [name, index, key] : cases) EXPECT_EQ(menus.At(name, index).hotKey, key) << name;
  EXPECT_EQ(MenuKeyText(Command::kOnlyUnit, 9), "9");
  EXPECT_EQ(MenuKeyText(Command::kOnlyUnit, 10), "");
}

// The document's table of keys is written by this table: what is missing there is printed here.
TEST(CommandTable, TheReadmeListsTheKeys) {
  std::ostringstream readme, expected;
  readme << std::ifstream(README).rdbuf();
  expected << "| key | what |\n| --- | --- |\n";
  for (const KeyRow& row : KeyRows()) expected << "| " << row.keys << " | " << row.text << " |\n";
  expected << "| Tab,";
  EXPECT_THAT(readme.str(), HasSubstr(expected.str()));
}

}  // namespace
}  // namespace pallomir
