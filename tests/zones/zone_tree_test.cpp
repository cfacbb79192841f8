#include "zones/zone_tree.h"

#include <gtest/gtest.h>

#include "zones/zone_edits.h"
#include "zones/zone_payload.h"
#include "zones/zone_testing.h"

namespace pallomir {
namespace {

// 1:A 1.1:B 1.1.1:C 1.2:D 2:E 3:F
ZoneTree Family() {
  ZoneTreeBuilder builder(ZoneKind::kAlerted);
  double lat = 40;
  for (const auto& [depth, name] : {std::pair(1, "A"), {2, "B"}, {3, "C"}, {2, "D"}, {1, "E"}, {1, "F"}})
    builder.Append(depth, {"spare " + std::string(name), name}, Square(lat += 1, -75, 0.5));
  return builder.Build();
}

TEST(ZoneTree, SectionsNameZones) {
  const ZoneTree tree = Family();
  EXPECT_EQ(Outline(tree), "Alerted 1:A 1.1:B 1.1.1:C 1.2:D 2:E 3:F");
  for (ZoneOrdinal zone = 0; zone < tree.Count(); ++zone)
    EXPECT_EQ(tree.WithSection(tree.Section(zone)), zone);
  for (const char* none :
       {"", "0", "4", "1.3", "1.1.1.1", "01", "1.", ".1", "1..1", "x", "1.1x", "99999999999"})
    EXPECT_EQ(tree.WithSection(none), std::nullopt) << none;
  EXPECT_EQ(tree.ChildrenOf(0), (std::vector<ZoneOrdinal>{1, 3}));
  EXPECT_EQ(tree.ChildrenOf(ZoneTree::kNone), (std::vector<ZoneOrdinal>{0, 4, 5}));
  EXPECT_EQ(tree.KindOf(2), ZoneKind::kAlerted);
  EXPECT_EQ(tree.KindOf(3), ZoneKind::kNonAlert);
  EXPECT_EQ(tree.At(2).bounds, (ZoneBounds{43, 43.5, -75, -74.5}));
}

TEST(ZoneTree, Edits) {
  const ZoneTree tree = Family();
  const ZoneContent content{{"other", "N"}, Square(0, 0, 1)};
  EXPECT_EQ(Outline(WithZoneDeleted(tree, 0)), "Alerted 1:E 2:F");
  EXPECT_EQ(Outline(WithZoneDeleted(tree, 1)), "Alerted 1:A 1.1:D 2:E 3:F");
  EXPECT_EQ(Outline(WithKindSwapped(tree)), "Non-Alert 1:A 1.1:B 1.1.1:C 1.2:D 2:E 3:F");
  EXPECT_EQ(WithKindSwapped(WithKindSwapped(tree)), tree);

  const ZoneTree added = WithZoneAdded(tree, 1, content);
  EXPECT_EQ(Outline(added), "Alerted 1:A 1.1:B 1.1.1:C 1.1.2:N 1.2:D 2:E 3:F");
  EXPECT_EQ(added.At(3).options.Spare, "spare F");  // of the last zone of the file
  EXPECT_EQ(added.VerticesOf(4)[0], tree.VerticesOf(3)[0]);
  EXPECT_EQ(Outline(WithZoneAdded(tree, ZoneTree::kNone, content)),
            "Alerted 1:A 1.1:B 1.1.1:C 1.2:D 2:E 3:F 4:N");
  EXPECT_EQ(WithZoneAdded(ZoneTree(), ZoneTree::kNone, content).At(0).options.Spare, "");

  const ZoneTree changed = WithZoneChanged(tree, 1, content);
  EXPECT_EQ(Outline(changed), "Alerted 1:A 1.1:N 1.1.1:C 1.2:D 2:E 3:F");
  EXPECT_EQ(changed.At(1).options.Spare, "spare B");
  EXPECT_EQ(changed.VerticesOf(1)[2], (ZoneVertex{1, 1}));
  EXPECT_EQ(changed.ContentOf(2).vertices, tree.ContentOf(2).vertices);
}

TEST(ZonePayload, TellsThePageOfAZone) {
  ZoneTreeBuilder builder(ZoneKind::kNonAlert);
  builder.Append(1, {}, std::vector<ZoneVertex>{{40.123456, -75.5}, {5, -122.5}, {-0.0000004, 179.9999996}});
  builder.Append(2, {}, {});
  const ZoneTree tree = builder.Build();
  EXPECT_EQ(ZonePayload(tree, 0), "FT 040.123456-075.500000T 005.000000-122.500000T 000.000000 180.000000F");
  EXPECT_EQ(ZonePayload(tree, 1), "TF");
  EXPECT_EQ(ZonePayload(WithKindSwapped(tree), 1), "FF");
}

TEST(ZonePayload, ReadsTheShapeThatIsSent) {
  using Shape = std::vector<ZoneVertex>;
  EXPECT_EQ(ParseShape("40.1~-75.2~-1~180~"), (Shape{{40.1, -75.2}, {-1, 180}}));
  EXPECT_EQ(ParseShape(""), Shape());
  EXPECT_EQ(ParseShape("40.1~-75.2~9"), (Shape{{40.1, -75.2}}));
  for (const char* bad : {"x~1~", "1~x~", "90.1~1~", "1~-180.1~", "1~", "~~", "nan~1~", "1~2~3~x~"})
    EXPECT_EQ(ParseShape(bad), std::nullopt) << bad;
  std::string many;
  for (std::size_t i = 0; i < kMaxShapeVertices + 1; ++i) many += "1~2~";
  EXPECT_EQ(ParseShape(many)->size(), kMaxShapeVertices);
}

}  // namespace
}  // namespace pallomir
