#include "map/projection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "map/bulk_projection.h"
#include "map/latitude_polynomials.h"
#include "map/map_view.h"
#include "map/page_fields.h"
#include "map/tile_name.h"

namespace pallomir {
namespace {

TEST(Projection, FixedPoints) {
  EXPECT_EQ(LngToWorldX(0), 536870912);
  EXPECT_EQ(LatToWorldY(0), 536870912);
  EXPECT_EQ(LngToWorldX(-108000000), 0);
  EXPECT_EQ(LngToWorldX(108000000), 1073741824);
  EXPECT_LT(LatToWorldY(51000000), 2'000'000) << "85 degrees north is near the top";
  EXPECT_LT(LatToWorldY(54'000'000), LatToWorldY(53'000'000)) << "the poles stay within 32 bits";
  EXPECT_GT(LatToWorldY(-54'000'000), LatToWorldY(-53'000'000));
}

TEST(Projection, LatitudesComeBackWithinOneUnitOfTheirs) {
  for (std::int32_t lat = -51'000'000; lat <= 51'000'000; lat += 997) {
    ASSERT_NEAR(WorldYToLat(LatToWorldY(lat)), lat / 600000.0, 1 / 600000.0) << lat;
  }
  for (std::int32_t lng = -108'000'000; lng <= 108'000'000; lng += 9973) {
    ASSERT_NEAR(WorldXToLng(LngToWorldX(lng)), lng / 600000.0, 1 / 600000.0) << lng;
  }
}

// The quick forms against the rule. Prime strides, so that latitudes fall anywhere into their slices.
TEST(Projection, InBulkEveryRowIsTheRules) {
  const auto expectRule = [](const std::vector<DataPoint>& wire) {
    std::vector<DataPoint> expected;
    for (const DataPoint& row : wire)
      expected.push_back({row.time, LngToWorldX(row.y), LatToWorldY(row.x), row.status});
    for (const ProjectionKernel kernel : ProjectionKernels()) {
      std::vector<DataPoint> rows = wire;
      kernel(rows);
      const auto wrong = std::mismatch(rows.begin(), rows.end(), expected.begin()).first - rows.begin();
      if (static_cast<std::size_t>(wrong) == rows.size()) continue;
      const DataPoint& at = wire[static_cast<std::size_t>(wrong)];
      ADD_FAILURE() << at.x << ", " << at.y << " by the "
                    << (kernel == ProjectionKernels().front() ? "plain" : "vector") << " kernel";
    }
  };
  std::vector<DataPoint> wire;
  for (std::int32_t lat = -54'000'000; lat <= 54'000'000; lat += 211) {
    wire.push_back({static_cast<std::uint32_t>(lat), lat, -2 * lat + lat % 3, 0xFFFF});
  }
  expectRule(wire);
  // Where polynomials begin and end, the poles and the antimeridian, rows in every place of a block.
  wire.clear();
  for (const std::int32_t lat : {0, 51'183'616, 51'167'232, -51'183'616, 16'384, -16'384, 53'999'000}) {
    for (std::int32_t d = -700; d <= 700; ++d) wire.push_back({1, lat + d, 107'999'300 + d, 2});
  }
  for (std::int32_t d = 0; d < 700; ++d) wire.push_back({3, -54'000'000 + d, -108'000'000 + d, 4});
  wire.push_back({5, 54'000'000, 108'000'000, 6});
  expectRule(wire);
  for (std::size_t rows = 0; rows < 10; ++rows)
    expectRule({wire.end() - static_cast<long>(rows), wire.end()});
}

TEST(Projection, ApproximationsDoubtWideEnough) {
  // Everything nearer to a half than kDoubt is left to the rule; the polynomials are at least twice as good
  // everywhere but at the rim.
  for (std::int32_t lat = 1 - kCovered; lat < kCovered; lat += 1009) {
    const LatitudePolynomial& p =
        LatitudePolynomials()[static_cast<std::size_t>((lat + kSlicesEnd) >> kSliceShift)];
    const double d = lat & (kSlice - 1);
    const double rule = WorldYFraction(lat / 600000.0) * kWorldSize;
    ASSERT_NEAR(((p[3] * d + p[2]) * d + p[1]) * d + p[0], rule,
                kDoubt * (std::abs(lat) < 48'000'000 ? 0.5 : 0.9))
        << lat;
  }
}

TEST(Projection, CosineSlicesAreTheNearestHalvesToEven) {
  for (std::int64_t y = -2147483648; y <= 2147483647; y += 99'991) {
    for (const std::int64_t at : {y, y >> 20 << 20 | 0x80000, (y >> 20 << 20 | 0x80000) - 1}) {
      const double slice = std::clamp(std::nearbyint(static_cast<double>(at) / 1048576), 0.0, 1024.0);
      ASSERT_EQ(static_cast<double>(CosLatIndex(static_cast<std::int32_t>(at))), slice) << at;
    }
  }
}

TEST(Projection, RoundsHalfToEven) {
  EXPECT_EQ(RoundToWorld(0.5), 0);
  EXPECT_EQ(RoundToWorld(1.5), 2);
  EXPECT_EQ(RoundToWorld(-2.5), -2);
  EXPECT_EQ(RoundToWorld(1e300), 2147483647);
  EXPECT_EQ(RoundToWorld(-1e300), -2147483647 - 1);
  EXPECT_EQ(RoundToWorld(std::nan("")), 2147483647);
}

TEST(Projection, DistancesAreMiles) {
  // One degree along the equator.
  const double degree = GroundDistanceMiles(LngToWorldX(0), 536870912, LngToWorldX(600000), 536870912);
  EXPECT_NEAR(degree, 24901.46 / 360, 1e-3);
  // At 60 degrees north a degree of longitude is half as long, within the table's slices.
  const std::int32_t y = LatToWorldY(36000000);
  EXPECT_NEAR(GroundDistanceMiles(LngToWorldX(0), y, LngToWorldX(600000), y), degree / 2, 0.1);
  EXPECT_GT(GroundDistanceMiles(0, -2000000000, 1000, 2000000000), 0)
      << "beyond the plane the table's ends count";
}

TEST(MapView, ZoomReportsSetTheScale) {
  MapView view;
  EXPECT_EQ(SetTileZoom(view, 12), ZoomChange::kFirst);
  EXPECT_EQ(SetTileZoom(view, 12), ZoomChange::kNone);
  EXPECT_EQ(SetTileZoom(view, 22), ZoomChange::kChanged);
  EXPECT_EQ(view.UnitsPerPixel, 1);
  EXPECT_EQ(SetTileZoom(view, 23), ZoomChange::kNone);
  EXPECT_EQ(SetTileZoom(view, -1), ZoomChange::kNone);
  EXPECT_EQ(SetTileZoom(view, 0), ZoomChange::kChanged);
  EXPECT_EQ(view.UnitsPerPixel, 4194304);
}

TEST(MapView, FitTakesTheLargestZoomThatHoldsTheBox) {
  const struct {
    WorldBox box;
    PixelSize size;
    int zoom;
    const char* name;
  } cases[] = {
      {{1000, 1000, 2000, 2000}, {800, 600}, 17, "a point"},
      {{1000, 9000, 2000, 2000}, {800, 600}, 17, "a line"},
      {{0, 100000, 0, 100000}, {0, 600}, 17, "no width"},
      {{0, 800 * 1024, 0, 600}, {800, 600}, 12, "exactly as wide as the view"},
      {{0, 800 * 1024 + 1, 0, 600}, {800, 600}, 11, "one unit wider"},
      {{0, 600, 0, 600 * 64}, {800, 600}, 16, "as high as the view"},
      {{0, 1, 0, 1}, {800, 600}, 31, "smaller than a pixel at any zoom"},
      {{0, 1073741824, 0, 1073741824}, {800, 600}, 1, "the whole world"},
  };
  for (const auto& c : cases) {
    MapView view;
    FitToBox(view, c.box, c.size);
    EXPECT_EQ(view.RequestedZoom, c.zoom) << c.name;
  }
  MapView view;
  FitToBox(view, DefaultBox(), {1000, 700});
  EXPECT_NEAR(view.CentreLng, -95.5, 1e-5);
  EXPECT_EQ(FitText(view).size(), 24u);
  EXPECT_EQ(FitText(view).substr(0, 3), "04+");
}

TEST(MapView, WorldAndViewPixels) {
  MapView view;
  SetTileZoom(view, 20);
  view.CentreX = 1000;
  view.CentreY = 1000;
  const PixelSize size{818, 600};
  EXPECT_EQ(WorldToView(view, 1000, 1000, size), (ViewPoint{400, 300}));
  EXPECT_EQ(WorldToView(view, 997, 1003, size), (ViewPoint{400, 300}))
      << "division truncates towards the centre";
  EXPECT_EQ(WorldToView(view, 996, 1004, size), (ViewPoint{399, 301}));
  EXPECT_EQ(ViewToWorld(view, 409, 300, size), (WorldPoint{1000, 1000}));
  EXPECT_EQ(ViewToWorld(view, 0, 0, size), (WorldPoint{1000 - 409 * 4, 1000 - 1200}));
}

TEST(TileName, FieldsAreCutToTheirDigits) {
  EXPECT_EQ(TileName(1, 17, 13107200, 6291456), "00011100C800006000");
  EXPECT_EQ(TileName(65535, 22, 1073741823, 0), "FFFF163FFFFF000000");
  EXPECT_EQ(TileName(0, 0, -300, -1), "000000FFFFFF000000");
}

}  // namespace
}  // namespace pallomir
