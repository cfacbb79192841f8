#include "base/whole_file.h"

#include <gtest/gtest.h>

#include "fakes/temporary_folder.h"

namespace pallomir {
namespace {

TEST(WholeFile, IsReadUpToItsLimitAndReplacedAsAWhole) {
  fakes::TemporaryFolder folder;
  const auto path = folder.Path() / "file";
  std::error_code error;
  EXPECT_FALSE(ReadWholeFile(path, 10, error));
  EXPECT_EQ(error, std::errc::no_such_file_or_directory);
  EXPECT_FALSE(ReplaceFile(path, std::string(10, 'x')));
  EXPECT_EQ(ReadWholeFile(path, 10, error), std::string(10, 'x'));
  EXPECT_FALSE(error);
  EXPECT_FALSE(ReadWholeFile(path, 9, error));
  EXPECT_EQ(error, std::errc::file_too_large);
  EXPECT_TRUE(ReplaceFile(path / "inside", "y"));
  std::filesystem::create_directory(folder.Path() / "folder");
  EXPECT_TRUE(ReplaceFile(folder.Path() / "folder", "y"));
  EXPECT_FALSE(std::filesystem::exists(folder.Path() / "folder.new")) << "what failed leaves nothing behind";
  EXPECT_FALSE(ReadWholeFile(folder.Path() / "folder", 10, error));
  EXPECT_EQ(error, std::errc::is_a_directory);
}

}  // namespace
}  // namespace pallomir
