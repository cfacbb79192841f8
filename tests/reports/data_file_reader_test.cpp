#include "reports/data_file_reader.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "reports/unit_files.h"
#include "reports_testing.h"

namespace pallomir {
namespace {

using Outcome = DataFileReader::Outcome;

const std::string kUnit = "00000000000A";

TEST(DataFileReader, TakesWholeRecordsUpTo720) {
  const DataFolder folder;
  const struct {
    std::size_t size;
    Outcome outcome;
  } cases[] = {{0, Outcome::kRead},          {13, Outcome::kCorrupted},    {14, Outcome::kRead},
               {15, Outcome::kCorrupted},    {10066, Outcome::kRead},      {10080, Outcome::kRead},
               {10081, Outcome::kCorrupted}, {10094, Outcome::kCorrupted}, {1 << 20, Outcome::kCorrupted}};
  DataFileReader reader;
  for (const auto& c : cases) {
    const std::string content(c.size, 'x');
    const auto file = folder.Write(kUnit, "f", content);
    EXPECT_EQ(reader.Read(AT_FDCWD, file.c_str()), c.outcome) << c.size;
    if (c.outcome == Outcome::kRead) {
      EXPECT_EQ(AsText(reader.Content()), content);
    }
  }
}

TEST(DataFileReader, SaysWhatItCouldNotRead) {
  const DataFolder folder;
  DataFileReader reader;
  EXPECT_EQ(reader.Read(AT_FDCWD, (folder.Path() / "none").c_str()), Outcome::kGone);
  EXPECT_EQ(reader.ErrorNumber(), ENOENT);
  EXPECT_EQ(reader.Read(AT_FDCWD, folder.Path().c_str()), Outcome::kNoFile);
  const auto pipe = folder.Path() / "pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(reader.Read(AT_FDCWD, pipe.c_str()), Outcome::kNoFile);
  // It says that it is empty, and is not.
  EXPECT_EQ(reader.Read(AT_FDCWD, "/proc/self/stat"), Outcome::kSizeChanged);
  EXPECT_GT(reader.BytesRead(), reader.FileSize());
}

TEST(UnitFiles, AreThePlainFilesBytewiseByName) {
  namespace fs = std::filesystem;
  const DataFolder folder;
  for (const char* name : {"b", "a b", "\xC3\xA4", "B", ".hidden", "10", "9", "new\nline"})
    folder.Write(kUnit, name, "");
  const fs::path unit = folder.Path() / kUnit;
  fs::create_directory(unit / "folder");
  fs::create_symlink(unit / "b", unit / "to a file");
  fs::create_symlink(unit / "folder", unit / "to a folder");
  fs::create_symlink(unit / "none", unit / "to nothing");
  ASSERT_EQ(::mkfifo((unit / "pipe").c_str(), 0600), 0);
  UnitFiles files(unit);
  const std::vector<std::string> expected = {".hidden", "10",        "9",         "B",       "a b",
                                             "b",       "new\nline", "to a file", "\xC3\xA4"};
  EXPECT_FALSE(files.List());
  EXPECT_EQ(files.Names(), expected);
  folder.Write(kUnit, "zz", "");
  EXPECT_FALSE(files.Open());
  EXPECT_EQ(files.Names().size(), expected.size() + 1) << "listed anew, as it has changed";
  UnitFiles none(folder.Path() / "00000000000B");
  EXPECT_FALSE(none.List());
  EXPECT_TRUE(none.Names().empty());
}

}  // namespace
}  // namespace pallomir
