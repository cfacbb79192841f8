#include "map/tile_renderer.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "map/map_view.h"
#include "oracles/literal_rules.h"

namespace pallomir {
namespace {

using Track = std::vector<DataPoint>;

// Compares tile by tile, so that a failure names the pixel.
void ExpectAsLiteral(const TrackDrawing& drawing, const TrackPicture& picture) {
  const auto literal = oracles::LiteralDraw(drawing, 1);
  const auto touched = picture.marks.TouchedTiles();
  ASSERT_EQ(touched.size(), literal.tiles.size());
  for (const TilePlace place : touched) {
    const std::string name = TileName(1, drawing.TileZoom, place);
    const auto tile = literal.tiles.find(name);
    ASSERT_NE(tile, literal.tiles.end()) << name;
    const TilePixels pixels = picture.marks.PixelsOf(place);
    const auto mark = [&pixels](std::size_t x, std::size_t y) {
      return pixels.rows[static_cast<std::ptrdiff_t>(y) * pixels.stride + static_cast<std::ptrdiff_t>(x)];
    };
    for (std::size_t x = 0; x < 256; ++x) {
      for (std::size_t y = 0; y < 256; ++y) {
        if (mark(x, y) != tile->second[x][y]) FAIL() << name << " " << x << "," << y;
      }
    }
  }
  EXPECT_EQ(picture.fastest.Entries(), literal.fastest);
}

void ExpectAsLiteral(const TrackDrawing& drawing) { ExpectAsLiteral(drawing, DrawTracks(drawing)); }

// At zoom 22 and this scale, about `centre`.
TrackDrawing DrawingAt(const WorldPoint& centre, PixelSize browser, int unitsPerPixel = 1) {
  TrackDrawing drawing;
  drawing.CentreX = centre.x;
  drawing.CentreY = centre.y;
  drawing.UnitsPerPixel = unitsPerPixel;
  drawing.TileZoom = 22;
  drawing.browser = browser;
  return drawing;
}

class Random {
 public:
  explicit Random(unsigned seed) : random_(seed) {}
  int Number(int least, int most) { return std::uniform_int_distribution<int>(least, most)(random_); }
  std::uint32_t Status() { return static_cast<std::uint32_t>(Number(0, 0xFFFF)); }

 private:
  std::mt19937 random_;
};

TEST(TileRenderer, DrawsTheSameInPartsOfAnySize) {
  Random random(7);
  DataPoint point{0, 312'000'000, 405'000'000, 0};
  TrackDrawing drawing = DrawingAt({point.x, point.y}, {300, 200}, 64);
  drawing.ringReceived = drawing.ringNotReceived = true;
  std::vector<Track> tracks;
  for (const std::size_t points : {0u, 200u, 1u, 130u}) {
    tracks.emplace_back(points);
    for (DataPoint& each : tracks.back())
      each = point = {point.time + 1, point.x + random.Number(-900, 900), point.y + random.Number(-900, 900),
                      random.Status()};
  }
  drawing.units.assign(tracks.begin(), tracks.end());
  ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(drawing));
  for (const std::size_t size : {1, 63, 64, 65, 331}) {
    TrackPainter painter(drawing);
    int parts = 1;
    while (painter.Paint(size)) ++parts;
    EXPECT_GT(parts, 331 / static_cast<int>(size)) << size;
    ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(drawing, painter.Take())) << size;
  }
}

TEST(TileRenderer, LongSegmentsMakeShorterParts) {
  Track track;
  for (int i = 0; i < 1000; ++i) track.push_back({1, 1'000'000 + i % 2 * 2000, 1'000'000, 0});
  TrackDrawing drawing = DrawingAt({1'000'000, 1'000'000}, {2000, 500});
  drawing.units = {track};
  TrackPainter painter(drawing);
  int parts = 1;
  while (painter.Paint(1000)) ++parts;
  EXPECT_GT(parts, 20);
}

// All directions and lengths of one segment, in each of the colours' phases, also across a tile's corner and
// left of the world's edge.
TEST(TileRenderer, DrawsEverySegmentAsTheRule) {
  for (const WorldPoint corner :
       {WorldPoint{1'000'192, 1'000'192}, WorldPoint{1'000'189, 1'000'191}, WorldPoint{1'000'190, 1'000'189},
        WorldPoint{1'000'191, 1'000'190}, WorldPoint{0, 0}}) {
    for (int dx = -13; dx <= 13; ++dx) {
      for (int dy = -13; dy <= 13; ++dy) {
        const Track track{{1, corner.x, corner.y, 0}, {2, corner.x + dx, corner.y + dy, 0}};
        TrackDrawing drawing = DrawingAt(corner, {100, 100});
        drawing.units = {track};
        ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(drawing)) << dx << " " << dy;
      }
    }
  }
}

// Positions at the poles have no place in the world and end at the limits of 32 bits.
TEST(TileRenderer, DrawsAtTheLimitsOf32Bits) {
  for (const std::int32_t limit :
       {std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()}) {
    const std::vector<DataPoint> track{{1, 0, limit, 0}, {2, 300, limit, 0}, {3, 0, limit, 0}, {4, 0, 0, 0}};
    TrackDrawing drawing = DrawingAt({0, limit}, {400, 400});
    drawing.units = {track};
    EXPECT_FALSE(DrawTracks(drawing).marks.TouchedTiles().empty()) << limit;
    std::vector<DataPoint> turned = track;
    for (DataPoint& point : turned) std::swap(point.x, point.y);
    drawing.units = {turned};
    std::swap(drawing.CentreX, drawing.CentreY);
    EXPECT_FALSE(DrawTracks(drawing).marks.TouchedTiles().empty()) << limit;
  }
}

// Crowds of points where coordinates turn negative, at the ends of what 32 bits hold and at the rim of the
// band, under views of any size, with both kinds of rings and marks over marks.
TEST(TileRenderer, DrawsEdgesOfTheWorldAndOfTheBandAsTheRule) {
  constexpr std::int32_t kEnd = 2'147'483'647;
  const WorldPoint centres[] = {
      {0, 0},          {-300, 520},     {-256, -256},      {255, -1},
      {1 << 30, 0},    {-255, 1 << 30}, {kEnd - 900, 900}, {-kEnd + 900, kEnd - 900},
      {-2'000, 3'000}, {-511, -512}};
  const PixelSize views[] = {{0, 0}, {1, 1}, {-300, 20}, {33, 900}, {700, 5}};
  unsigned seed = 0;
  for (const WorldPoint centre : centres) {
    for (const PixelSize view : views) {
      for (const int unit : {1, 1 << 22}) {
        Random random(++seed);
        std::vector<Track> tracks(3);
        for (Track& track : tracks) {
          for (std::uint32_t j = 0; j < 60; ++j) {
            // Mostly dense about the centre; one in four at the band's rim.
            const auto near = [&](std::int32_t middle, int size) {
              const int rim = (size + 256) * (random.Number(0, 1) ? 1 : -1);
              const int offset = random.Number(0, 3) ? random.Number(-60, 60) : rim + random.Number(-3, 3);
              return static_cast<std::int32_t>(std::clamp<std::int64_t>(
                  middle + std::int64_t{offset} * unit + random.Number(0, unit - 1), -kEnd + 10, kEnd - 10));
            };
            track.push_back(
                {j + 1, near(centre.x, view.width), near(centre.y, view.height), random.Status()});
          }
        }
        TrackDrawing drawing = DrawingAt(centre, view, unit);
        drawing.units.assign(tracks.begin(), tracks.end());
        drawing.ringReceived = seed % 2 == 0;
        drawing.ringNotReceived = seed % 3 != 0;
        ASSERT_NO_FATAL_FAILURE(ExpectAsLiteral(drawing))
            << centre.x << "," << centre.y << " " << view.width << "x" << view.height << " " << unit;
      }
    }
  }
}

TEST(FastestPoints, KeepsTwentyTwoEntriesAndTheEarlierOfEquals) {
  FastestPoints fastest;
  for (std::size_t j = 1; j <= 40; ++j) fastest.Offer({j, static_cast<std::uint32_t>(j % 5), 1});
  ASSERT_EQ(fastest.Entries().size(), 22u);
  EXPECT_EQ(fastest.Entries()[1], (FastPoint{4, 4, 1}));
  EXPECT_EQ(fastest.Entries()[2], (FastPoint{9, 4, 1}));
  EXPECT_EQ(fastest.Entries().back().speed, 2u);
}

}  // namespace
}  // namespace pallomir
