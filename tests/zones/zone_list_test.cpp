#include <gtest/gtest.h>

#include "zones/zone_area.h"
#include "zones/zone_list_model.h"

namespace pallomir {
namespace {

using Corners = std::vector<ZoneVertex>;

TEST(ZoneArea, OnARoundEarth) {
  // The area between two parallels is 2 pi r^2 times the difference of their sines; with a circumference of
  // 24901.46 miles that is 98,691,000 times it.
  const double sphereHalf = 24901.46 * 24901.46 / 6.283185307179586;
  const auto part = [&](double degrees) { return sphereHalf * degrees / 360; };
  const double onEquator = part(1) * 2 * 0.008726535498373935;
  const std::tuple<const char*, Corners, double> cases[] = {
      {"a degree on the equator", {{-0.5, 0}, {0.5, 0}, {0.5, 1}, {-0.5, 1}}, onEquator},
      {"the same the other way round", {{-0.5, 1}, {0.5, 1}, {0.5, 0}, {-0.5, 0}}, onEquator},
      {"an eighth of the globe to the pole", {{0, 0}, {0, 90}, {90, 90}, {90, 0}}, part(90)},
      {"ten metres, where the terms are small",
       {{60, 10}, {60.0001, 10}, {60.0001, 10.0002}, {60, 10.0002}},
       part(0.0002) * 8.726640e-7},
      {"two corners", {{1, 1}, {5, 5}}, 0},
      {"none", {}, 0},
  };
  for (const auto& [what, corners, area] : cases)
    EXPECT_NEAR(AreaInSquareMiles(corners), area, 1e-5 * area + 1e-8) << what;
  // A diagonal edge: half of a small square, nearly.
  EXPECT_NEAR(AreaInSquareMiles(Corners{{40, 5}, {41, 5}, {41, 6}}) /
                  AreaInSquareMiles(Corners{{40, 5}, {41, 5}, {41, 6}, {40, 6}}),
              0.4975, 0.0005);
}

TEST(ZoneList, AreasHaveThreeDigits) {
  const std::tuple<double, bool, const char*> cases[] = {
      {0, false, "0 sq mi"},          {0.0000123456, false, "0.0000123 sq mi"},
      {1, false, "1.00 sq mi"},       {1, true, "2.59 km²"},
      {34.56, false, "34.6 sq mi"},   {999.4, false, "999 sq mi"},
      {1234.5, false, "1,230 sq mi"}, {123456789, false, "123,000,000 sq mi"}};
  for (const auto& [squareMiles, inKilometers, text] : cases)
    EXPECT_EQ(AreaText(squareMiles, inKilometers), text);
}

TEST(ZoneList, DaysReadAsRuns) {
  const std::pair<const char*, const char*> cases[] = {{"SMTWTFS", "Every day"}, {"-MTWTF-", "Mon-Fri"},
                                                       {"S-----S", "Sun, Sat"},  {"SM-W---", "Sun, Mon, Wed"},
                                                       {"-------", "No day"},    {"", "Every day"}};
  for (const auto& [stored, text] : cases) EXPECT_EQ(DaysText({"", "", stored}), text) << stored;
}

}  // namespace
}  // namespace pallomir
