#include "reports/file_summaries.h"

#include <gtest/gtest.h>

#include "reports_testing.h"

namespace pallomir {
namespace {

const std::string kUnit = "00000000000A";

TEST(FileSummaries, HaveABoxAroundEach32Records) {
  std::vector<WireRecord> records;
  for (int i = 0; i < 65; ++i) records.push_back(RecordAt(i, 100 - i, 1000 + i));
  records[3].time |= kPackedTimeFlag;
  const std::string file = FileOf(records);
  const auto summary = Summarise(AsBytes(file), {1, file.size(), 2, 3});
  ASSERT_TRUE(summary);
  EXPECT_EQ(summary->first, Second(0));
  EXPECT_EQ(summary->last, Second(64));
  EXPECT_EQ(summary->boxes,
            (std::vector<PositionBox>{{69, 100, 1000, 1031}, {37, 68, 1032, 1063}, {36, 36, 1064, 1064}}));
  EXPECT_TRUE(summary->Meets({68, 68, 1032, 1032}));
  EXPECT_FALSE(summary->Meets({68, 68, 1000, 1031})) << "between two of them";
  EXPECT_FALSE(Summarise({}, {}));
  const std::string descending = FileOf({RecordAt(1), RecordAt(0)});
  EXPECT_FALSE(Summarise(AsBytes(descending), {1, 28, 2, 3}));
}

TEST(FileSummaries, ReadBackOrAsNoneWhereTheyAreDamaged) {
  FileSummaries summaries;
  for (const char* name : {"1", "2 \n", ""}) {
    const std::string file = FileOf({RecordAt(0, -1, 5), RecordAt(0, 7, -9)});
    summaries.emplace(name, *Summarise(AsBytes(file), {~std::uint64_t{0}, file.size(), -1, 999'999'999}));
  }
  const std::string text = EncodeSummaries(summaries);
  EXPECT_EQ(DecodeSummaries(text), summaries);
  EXPECT_TRUE(DecodeSummaries(EncodeSummaries({})).empty());
  for (std::size_t at = 0; at < text.size(); ++at) {
    EXPECT_TRUE(DecodeSummaries(text.substr(0, at)).empty()) << at;
    std::string damaged = text;
    damaged[at] = static_cast<char>(damaged[at] ^ 0x10);
    EXPECT_TRUE(DecodeSummaries(damaged).empty()) << at;
  }
}

TEST(FileSummaries, AreMadeAnewForWhatChanged) {
  const DataFolder folder;
  folder.Write(kUnit, "1", FileOf({RecordAt(0, 5)}));
  folder.Write(kUnit, "torn", "x");
  folder.Write(kUnit, "empty", "");
  const auto boxOf = [&folder](const char* name) {
    StoreSummaries(folder.Path(), kUnit);
    const FileSummaries summaries = ReadSummaries(folder.Path(), kUnit);
    EXPECT_FALSE(summaries.contains("torn") || summaries.contains("empty"));
    const auto found = summaries.find(name);
    return found == summaries.end() ? PositionBox{} : found->second.boxes.at(0);
  };
  EXPECT_EQ(boxOf("1"), (PositionBox{5, 5, 0, 0}));
  folder.Write(kUnit, "2", FileOf({RecordAt(1, 6)}));
  folder.Write(kUnit, "1", FileOf({RecordAt(0, 7), RecordAt(1, 8)}));
  EXPECT_EQ(boxOf("1"), (PositionBox{7, 8, 0, 0}));
  EXPECT_EQ(boxOf("2"), (PositionBox{6, 6, 0, 0}));
  std::filesystem::remove(folder.Path() / kUnit / "1");
  EXPECT_EQ(boxOf("1"), PositionBox{});
  // Where its place leads elsewhere, nothing is written there.
  std::filesystem::remove_all(folder.Path() / ".summaries");
  std::filesystem::create_directory(folder.Path() / "elsewhere");
  std::filesystem::create_symlink("elsewhere", folder.Path() / ".summaries");
  StoreSummaries(folder.Path(), kUnit);
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path() / "elsewhere"));
}

}  // namespace
}  // namespace pallomir
