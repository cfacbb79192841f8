#include "zones/zone_exchange.h"

#include <gtest/gtest.h>

#include "zones/zone_testing.h"

namespace pallomir {
namespace {

constexpr ZoneFormat kFormats[] = {ZoneFormat::kGeoJson, ZoneFormat::kKml};

TEST(ZoneExchange, WhatIsExportedIsReadBackEqual) {
  std::mt19937 random(3);
  for (int round = 0; round < 40; ++round) {
    ZoneTree tree = RandomZones(random, static_cast<int>(random() % 30));
    ZoneTreeBuilder more(tree.TopLevelKind());
    more.Append(1, {" ", "R&D 'x', <b> \xC3\xA9", "-------", "0000", "0000"}, {});
    more.Append(2, {"", "point", "SMTWTFS", "2455", "2355"},
                std::vector<ZoneVertex>{{1e-7, -179.123456789012}});
    more.Append(3, {"", "closed"}, std::vector<ZoneVertex>{{1, 2}, {3, 4}, {1, 2}});
    more.Append(2, {"", "", "weekdays", "7", ""}, std::vector<ZoneVertex>{{1, 2}, {3, 4}, {5, 2}});
    more.Append(3, {"", "", "", "", ""}, {});
    tree = WithZonesAppended(tree, more.Build());
    for (const ZoneFormat format : kFormats) {
      const ImportedZones back = ImportZones(ExportZones(tree, format), format);
      EXPECT_EQ(back.problem, "");
      EXPECT_TRUE(back.namesKind);
      EXPECT_EQ(back.tree, tree) << Outline(back.tree) << '\n' << Outline(tree);
    }
  }
}

TEST(ZoneExchange, NamesBecomeWhatTheZoneFileCanHold) {
  ZoneTreeBuilder quoted(ZoneKind::kAlerted);
  quoted.Append(1, {"", "\"North\"\tgate"}, std::vector<ZoneVertex>{{1, 2}, {3, 4}, {5, 2}});
  const ZoneTree tree = quoted.Build();
  for (const ZoneFormat format : kFormats)
    EXPECT_EQ(Outline(ImportZones(ExportZones(tree, format), format).tree), "Alerted 1:'North'gate");
}

TEST(ZoneExchange, AppendedZonesKeepTheirNesting) {
  ZoneTreeBuilder first(ZoneKind::kNonAlert), second(ZoneKind::kAlerted);
  first.Append(1, {"", "A"}, {});
  first.Append(2, {"", "B"}, {});
  second.Append(1, {"", "C"}, {});
  second.Append(2, {"", "D"}, {});
  EXPECT_EQ(Outline(WithZonesAppended(first.Build(), second.Build())), "Non-Alert 1:A 1.1:B 2:C 2.1:D");
}

TEST(ZoneExchange, ReadsFilesOfOthers) {
  const auto feature = [](const std::string& properties, const std::string& geometry,
                          const std::string& more = "") {
    return R"({"type":"Feature","properties":)" + properties + R"(,"geometry":)" + geometry + more + "}";
  };
  const auto collection = [](const std::string& features) {
    return std::pair(ZoneFormat::kGeoJson, R"({"type":"FeatureCollection","features":[)" + features + "]}");
  };
  const std::string polygon = R"({"type":"Polygon","coordinates":[[[1,2,9],[3,4],[5,6],[1,2,9]]]})";
  const std::string holed = R"({"type":"Polygon","coordinates":[[[0,0],[9,0],[9,9]],[[1,1],[2,1],[2,2]]]})";
  const auto placemark = [](const std::string& name, const std::string& coordinates) {
    return "<Placemark><name>" + name + "</name><MultiGeometry><Polygon><outerBoundaryIs><LinearRing>" +
           "<coordinates>" + coordinates + "</coordinates></LinearRing></outerBoundaryIs></Polygon>" +
           "</MultiGeometry></Placemark>";
  };
  const auto geoJson = [](const std::string& file) { return std::pair(ZoneFormat::kGeoJson, file); };
  const auto kmlOf = [](const std::string& content) {
    return std::pair(ZoneFormat::kKml, "<kml><Document>" + content + "</Document></kml>");
  };
  const auto corners = [&](const std::string& places) {
    return geoJson(feature(R"({"name":"A"})", R"({"type":"Polygon","coordinates":[[)" + places + "]]}"));
  };
  const std::tuple<const char*, std::pair<ZoneFormat, std::string>, const char*> cases[] = {
      // outline or problem
      {"one geometry", geoJson(polygon), "Alerted 1:Zone 1 3"},
      {"no properties", geoJson(feature("null", polygon)), "Alerted 1:Zone 1 3"},
      {"hole", collection(feature(R"({"name":"Lake"})", holed)), "Alerted 1:Lake 1.1:Lake (hole) 3 3"},
      {"several areas, points passed over",
       collection(
           feature("{}", R"({"type":"Point","coordinates":[1,2]})") + "," +
           feature("{}", R"({"type":"MultiPolygon","coordinates":[[[[0,0],[1,0]]],[[[2,2],[3,3]]]]})")),
       "Alerted 1:Zone 1 2:Zone 2 2 2"},
      {"children first, unknown parent",
       collection(feature(R"({"name":"B","parent":"a"})", polygon) + "," +
                  feature(R"({"name":"A"})", polygon, R"(,"id":"a")") + "," +
                  feature(R"({"name":"C","parent":"z"})", polygon)),
       "Alerted 1:A 1.1:B 2:C 3 3 3"},
      {"parents in a circle",
       collection(feature(R"({"name":"A","parent":2})", polygon, R"(,"id":1)") + "," +
                  feature(R"({"name":"B","parent":1})", polygon, R"(,"id":2)")),
       "Alerted 1:A 1.1:B 3 3"},
      {"no polygon", collection(""), "The file holds no polygon."},
      {"no JSON", geoJson("{"), "The file is no GeoJSON."},
      {"word for a number", corners(R"([1,"2"])"), "A corner of \"A\" is no position."},
      {"outside the world", corners("[1,90.1]"), "A corner of \"A\" lies outside the world."},
      {"KML of others",
       kmlOf("<Folder>" + placemark("Yard", "\n 1,2,0 3,4,0\t5,6,0 1,2,0 ") + "</Folder>" +
             "<Placemark><name>here</name><Point><coordinates>1,2</coordinates></Point></Placemark>" +
             placemark("Gate", "7,8")),
       "Alerted 1:Yard 2:Gate 3 1"},
      {"KML with a word", kmlOf(placemark("Yard", "1,x")), "A corner of \"Yard\" is no position."},
      {"KML without an area", kmlOf(""), "The file holds no polygon."},
      {"no KML", {ZoneFormat::kKml, "<kml>"}, "The file is no KML."},
  };
  for (const auto& [name, file, outline] : cases) {
    const ImportedZones read = ImportZones(file.second, file.first);
    EXPECT_EQ(read.problem.empty() ? OutlineWithCorners(read.tree) : read.problem, outline) << name;
    EXPECT_FALSE(read.namesKind) << name;
  }
}

TEST(ZoneExchange, FormatsAreKnownByTheirNames) {
  for (const auto& [name, format] : {std::pair("a.b/zones.GeoJSON", kFormats[0]),
                                     {"zones.json", kFormats[0]},
                                     {"zones.kml", kFormats[1]},
                                     {"kml", kFormats[1]}})
    EXPECT_EQ(FormatOfName(name), format) << name;
  EXPECT_EQ(FormatOfName("zones.txt"), std::nullopt);
}

TEST(ZoneExchange, LargeFilesTellHowFarTheyAreAndCanBeLeft) {
  ZoneTreeBuilder builder(ZoneKind::kAlerted);
  for (int i = 0; i < 2000; ++i) builder.Append(1, {"", "Z"}, Square(i / 100.0, 1, 0.5));
  const ZoneTree tree = builder.Build();
  for (const ZoneFormat format : kFormats) {
    const std::string file = ExportZones(tree, format);
    WorkProgress progress;
    EXPECT_EQ(ImportZones(file, format, &progress).tree, tree);
    EXPECT_GT(progress.percent, 50);
    EXPECT_LE(progress.percent, 100);
    progress.isCancelled = true;
    progress.percent = 0;
    EXPECT_TRUE(ImportZones(file, format, &progress).tree.IsEmpty());
    EXPECT_LT(progress.percent, 10);
  }
}

}  // namespace
}  // namespace pallomir
