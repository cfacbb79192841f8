#include <gmock/gmock.h>
#include <png.h>
#include <sys/stat.h>

#include <random>
#include <set>

#include "base/number_format.h"
#include "fakes/temporary_folder.h"
#include "map/track_tiles.h"

namespace pallomir {
namespace {

namespace fs = std::filesystem;

std::vector<std::uint32_t> ReadPng(const fs::path& file) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  EXPECT_TRUE(png_image_begin_read_from_file(&image, file.c_str())) << image.message;
  image.format = PNG_FORMAT_BGRA;
  std::vector<std::uint32_t> pixels(PNG_IMAGE_SIZE(image) / 4);
  EXPECT_TRUE(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr)) << image.message;
  return pixels;
}

class TrackTilesTest : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* name : {"t", "z", "p"}) fs::create_directory(folder_.Path() / name);
  }
  fs::path Tracks() const { return folder_.Path() / "t"; }

  fakes::TemporaryFolder folder_;
  std::vector<std::string> traced_;
  Trace trace_{[] { return 0.0; }, [this](const std::string& line) { traced_.push_back(line); }};
  TrackTiles tiles_{{folder_.Path() / "t", folder_.Path() / "z", folder_.Path() / "p"}, trace_};
  static constexpr DataPoint kPoint{1, 1000 * 256 + 7, 2000 * 256 + 9, 0};

  static ino_t FileAt(const fs::path& path) {
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
    return status.st_ino;
  }

  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(Tracks()))
      names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
  }

  // Six tiles in a row, the first of them that of OnePoint().
  static std::vector<std::string> Wide(const std::string& generation) {
    std::vector<std::string> names;
    for (const char column : std::string("89ABCD"))
      names.push_back(generation + "160003E" + column + "0007D0.png");
    return names;
  }
  static std::vector<DataPoint> Row(std::uint32_t count) {
    std::vector<DataPoint> row;
    for (std::uint32_t j = 0; j < count; ++j)
      row.push_back({j + 1, kPoint.x + kTileSize * static_cast<int>(j), kPoint.y, 0});
    return row;
  }

  std::optional<DeleteError> Rebuild(const TrackDrawing* drawing) {
    tiles_.Begin(drawing ? std::optional(*drawing) : std::nullopt);
    for (;;) {
      if (const auto end = tiles_.Continue()) return end->error;
    }
  }

  TrackDrawing OnePoint() const {
    TrackDrawing drawing;
    drawing.units = {{&kPoint, 1}};
    drawing.CentreX = kPoint.x;
    drawing.CentreY = kPoint.y;
    drawing.TileZoom = 22;
    drawing.browser = {100, 100};
    return drawing;
  }
};

TEST_F(TrackTilesTest, ARebuildThatIsDroppedWhileItIsWrittenLeavesNothing) {
  TrackDrawing many = OnePoint();
  const auto row = Row(100);
  many.units = {row};
  many.browser.width = 100 * kTileSize;
  const TrackDrawing one = OnePoint();
  ASSERT_FALSE(Rebuild(&one));
  tiles_.Begin(many);
  while (Names().size() < 2) ASSERT_FALSE(tiles_.Continue());
  ASSERT_FALSE(Rebuild(&one));
  EXPECT_EQ(Names(), std::vector{tiles_.GenerationText() + "160003E80007D0.png"});
  EXPECT_EQ(ReadPng(Tracks() / Names()[0])[9 * 256 + 7], 0xFFFF0000u);
}

TEST_F(TrackTilesTest, AFileHoldsTheMarkedPixelsAndNothingElse) {
  const TrackDrawing drawing = OnePoint();
  ASSERT_FALSE(Rebuild(&drawing));
  const fs::path file = tiles_.TrackTilePath("160003E80007D0");
  ASSERT_EQ(file, Tracks() / "0001160003E80007D0.png");
  const auto pixels = ReadPng(file);
  ASSERT_EQ(pixels.size(), 65536u);
  EXPECT_EQ(pixels[9 * 256 + 7], 0xFFFF0000u) << "red cross";
  EXPECT_EQ(pixels[9 * 256 + 7 + 6], 0xFF00FF00u) << "green ring";
  EXPECT_EQ(pixels[0], 0u);
  EXPECT_EQ(std::count_if(pixels.begin(), pixels.end(), [](auto p) { return p != 0; }), 9 + 76);
}

TEST_F(TrackTilesTest, EveryRebuildReplacesAllFilesAndCountsOn) {
  const TrackDrawing drawing = OnePoint();
  Rebuild(&drawing);
  fakes::WriteFile(Tracks() / "foreign", "x");
  fakes::WriteFile(folder_.Path() / "z" / "000116000000000000.png", "x");
  fs::create_directory(Tracks() / "sub");
  Rebuild(&drawing);
  EXPECT_EQ(tiles_.GenerationText(), "0002");
  EXPECT_TRUE(fs::exists(Tracks() / "0002160003E80007D0.png"));
  EXPECT_FALSE(fs::exists(Tracks() / "0001160003E80007D0.png"));
  EXPECT_FALSE(fs::exists(Tracks() / "foreign"));
  EXPECT_TRUE(fs::exists(Tracks() / "sub"));
  EXPECT_TRUE(fs::is_empty(folder_.Path() / "z"));
  Rebuild(nullptr);
  for (const char* foreign : {"0003160003E80007D0.bmp", "0003160003E80007D0.png2"})
    fakes::WriteFile(Tracks() / foreign, "x");
  EXPECT_EQ(tiles_.TrackTilePath("160003E80007D0"), folder_.Path() / "p" / "blank_x.png");
  for (int i = 4; i < 65536; ++i) Rebuild(nullptr);
  EXPECT_EQ(tiles_.GenerationText(), "FFFF");
  Rebuild(nullptr);
  EXPECT_EQ(tiles_.GenerationText(), "0000");
}

// The files of one rebuild serve the next; none keeps what was in it.
TEST_F(TrackTilesTest, FilesAreWrittenOverWithoutATraceOfTheOldSet) {
  TrackDrawing wide = OnePoint();
  const auto row = Row(6);
  wide.units = {row};
  wide.browser = {2000, 100};
  const TrackDrawing narrow = OnePoint();
  Rebuild(&narrow);
  const auto fresh = ReadPng(Tracks() / "0001160003E80007D0.png");
  Rebuild(&wide);
  EXPECT_EQ(Names(), Wide("0002"));
  // What lies where a file is to be written over may have grown, shrunk or lost its permissions.
  fakes::WriteFile(Tracks() / Wide("0002")[0], std::string(100'000, 'x'));
  fs::resize_file(Tracks() / Wide("0002")[1], 3);
  fs::permissions(Tracks() / Wide("0002")[2], fs::perms::none);
  Rebuild(&wide);
  EXPECT_EQ(Names(), Wide("0003"));
  std::set<ino_t> before, after;
  for (const auto& name : Names()) before.insert(FileAt(Tracks() / name));
  Rebuild(&wide);
  for (const auto& name : Names()) after.insert(FileAt(Tracks() / name));
  EXPECT_EQ(after, before) << "the same files under other names";
  for (const auto& name : Names()) EXPECT_EQ(ReadPng(Tracks() / name).size(), 65536u) << name;
  Rebuild(&narrow);
  EXPECT_EQ(Names(), std::vector<std::string>{"0005160003E80007D0.png"});
  EXPECT_EQ(ReadPng(Tracks() / Names()[0]), fresh);
  EXPECT_THAT(traced_, testing::IsEmpty());
}

// Whatever is not a plain tile file of ours is deleted as ever, never written over.
TEST_F(TrackTilesTest, LinksAndForeignFilesAreNotWrittenOver) {
  const TrackDrawing drawing = OnePoint();
  const fs::path precious = folder_.Path() / "precious", place = Tracks() / "AAAA160003E80007D0.png";
  std::string next;
  const std::function<void()> cases[] = {
      [&] { fs::create_symlink(precious, place); },
      [&] { fs::create_hard_link(precious, place); },
      [&] {
        fs::create_symlink(precious, Tracks() / (next + "160003E80007D0.png"));
        fakes::WriteFile(Tracks() / (next + "16000000000000.png"), "old");
      },
      [&] { fakes::WriteFile(Tracks() / "aaaa160003e80007d0.png", "x"); },
  };
  for (const auto& bring : cases) {
    fakes::WriteFile(precious, "precious");
    next = HexDigits(static_cast<std::uint64_t>(tiles_.TileGeneration() + 1), 4);
    bring();
    EXPECT_FALSE(Rebuild(&drawing)) << next;
    EXPECT_EQ(Names(), std::vector{next + "160003E80007D0.png"});
    EXPECT_EQ(ReadPng(Tracks() / Names()[0]).size(), 65536u) << next;
    EXPECT_EQ(fakes::ReadFile(precious), "precious") << next;
  }
  EXPECT_THAT(traced_, testing::IsEmpty());
}

TEST_F(TrackTilesTest, AFolderInATilesPlaceLeavesThatTileBlank) {
  const TrackDrawing drawing = OnePoint();
  Rebuild(&drawing);
  fs::create_directory(Tracks() / "0002160003E80007D0.png");
  EXPECT_FALSE(Rebuild(&drawing));
  EXPECT_EQ(tiles_.TrackTilePath("160003E80007D0"), folder_.Path() / "p" / "blank_x.png");
  EXPECT_FALSE(fs::exists(Tracks() / "0001160003E80007D0.png"));
  EXPECT_THAT(traced_, testing::Contains(testing::HasSubstr("could not be written")));
}

TEST_F(TrackTilesTest, AFolderThatCannotBeListedEndsTheRebuild) {
  fs::remove(Tracks());
  fakes::WriteFile(Tracks(), "x");
  const auto error = Rebuild(nullptr);
  ASSERT_TRUE(error);
  EXPECT_EQ(error->number, 75);
  EXPECT_EQ(tiles_.GenerationText(), "0000");
  fs::remove(Tracks());
  const TrackDrawing drawing = OnePoint();
  EXPECT_FALSE(Rebuild(&drawing)) << "a folder that is not there holds nothing to delete";
  EXPECT_THAT(traced_, testing::Contains(testing::HasSubstr("could not be written")));
}

// Any picture, read back by another library; every colour at even and odd places; a buffer used again.
TEST(PalettePng, PicturesComeBackAsTheyWere) {
  fakes::TemporaryFolder folder;
  PalettePng png(kTrackPalette);
  std::mt19937 random(5);
  constexpr std::ptrdiff_t kStride = 300;
  for (const unsigned density : {0u, 2u, 256u}) {
    std::vector<std::uint8_t> plane(kStride * kTileSize);
    for (auto& pixel : plane) pixel = static_cast<std::uint8_t>(random() % 256 < density ? random() % 7 : 0);
    const fs::path file = folder.Path() / "x.png";
    fakes::WriteFile(file, std::string(AsText(png.Encode({plane.data(), kStride}))));
    const auto pixels = ReadPng(file);
    ASSERT_EQ(pixels.size(), 65536u);
    for (std::size_t i = 0; i < pixels.size(); ++i)
      ASSERT_EQ(pixels[i], kTrackPalette[plane[i / 256 * kStride + i % 256]]) << i << " " << density;
  }
}

}  // namespace
}  // namespace pallomir
