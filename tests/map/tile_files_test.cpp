#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <png.h>

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
  std::vector<std::string> errors_;
  Trace trace_{[] { return 0.0; }, [this](const std::string& line) { traced_.push_back(line); }};
  TrackTiles tiles_{{folder_.Path() / "t", folder_.Path() / "z", folder_.Path() / "p"},
                    trace_,
                    [this](const std::string& text) { errors_.push_back(text); }};
  const std::vector<DataPoint> point_{{1, 1000 * 256 + 7, 2000 * 256 + 9, 0}};

  TrackDrawing OnePoint() const {
    TrackDrawing drawing;
    drawing.units = {point_};
    drawing.CentreX = point_[0].x;
    drawing.CentreY = point_[0].y;
    drawing.TileZoom = 22;
    drawing.browser = {100, 100};
    return drawing;
  }
};

TEST_F(TrackTilesTest, AFileHoldsTheMarkedPixelsAndNothingElse) {
  const TrackDrawing drawing = OnePoint();
  ASSERT_FALSE(tiles_.Rebuild(&drawing));
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
  tiles_.Rebuild(&drawing);
  fakes::WriteFile(Tracks() / "foreign", "x");
  fakes::WriteFile(folder_.Path() / "z" / "000116000000000000.png", "x");
  fs::create_directory(Tracks() / "sub");
  tiles_.Rebuild(&drawing);
  EXPECT_EQ(tiles_.GenerationText(), "0002");
  EXPECT_TRUE(fs::exists(Tracks() / "0002160003E80007D0.png"));
  EXPECT_FALSE(fs::exists(Tracks() / "0001160003E80007D0.png"));
  EXPECT_FALSE(fs::exists(Tracks() / "foreign"));
  EXPECT_TRUE(fs::exists(Tracks() / "sub"));
  EXPECT_TRUE(fs::is_empty(folder_.Path() / "z"));
  tiles_.Rebuild(nullptr);
  EXPECT_EQ(tiles_.TrackTilePath("160003E80007D0"), folder_.Path() / "p" / "blank_x.png");
  for (int i = 4; i < 65536; ++i) tiles_.Rebuild(nullptr);
  EXPECT_EQ(tiles_.GenerationText(), "FFFF");
  tiles_.Rebuild(nullptr);
  EXPECT_EQ(tiles_.GenerationText(), "0000");
}

TEST_F(TrackTilesTest, ATileThatCannotBeWrittenIsTracedOnly) {
  fs::remove(Tracks());
  const TrackDrawing drawing = OnePoint();
  EXPECT_FALSE(tiles_.Rebuild(&drawing)) << "a folder that is not there holds nothing to delete";
  EXPECT_THAT(traced_, testing::Contains(testing::HasSubstr("imaging error 7 (Win32 Error) in SaveToFile")));
  EXPECT_TRUE(errors_.empty());
}

TEST(Imaging, CallsReportTheirFailures) {
  cGDIP library;
  std::vector<std::string> raised;
  library.raised = [&raised](int, const std::string& message, const std::string&) {
    raised.push_back(message);
  };
  cBitmap bitmap(library);
  EXPECT_EQ(bitmap.SetPixelLong(0, 0, 1), kInvalidParameter);
  EXPECT_EQ(bitmap.SaveToFile("/nowhere/x.png", ImageEncoder::kPng), kWrongState);
  EXPECT_EQ(bitmap.CreateFromScan0(256, 256, 1000, kPixelFormat32bppARGB), kInvalidParameter);
  EXPECT_EQ(bitmap.CreateFromScan0(256, 256, 1024, kPixelFormat32bppARGB), kImagingOk);
  EXPECT_EQ(bitmap.SetPixelLong(256, 0, 1), kInvalidParameter);
  EXPECT_EQ(bitmap.SaveToFile("/nowhere/x.png", ImageEncoder::kNone), kUnknownImageFormat);
  EXPECT_EQ(raised.size(), 5u);
  EXPECT_EQ(cBitmap::EncoderForPattern("*.PNG"), ImageEncoder::kPng);
  EXPECT_EQ(cBitmap::EncoderForPattern("*.bmp"), ImageEncoder::kNone);
  EXPECT_EQ(cGDIP::Message(20), "Property Not Supported");
  EXPECT_EQ(cGDIP::Message(21), "Unknown GDI+ Error");
  EXPECT_EQ(cGDIP::Message(-1), "Unknown GDI+ Error");
}

}  // namespace
}  // namespace pallomir
