#include "zones/zone_file.h"

#include <gtest/gtest.h>

#include <limits>

#include "zones/zone_testing.h"

namespace pallomir {
namespace {

const std::string kHeader = R"(,"","Depot","SMTWTFS","0000","0000")";

std::string OutlineOf(const std::string& file) {
  const ZoneFileContent content = ReadZones(file);
  if (content.illegalDepth) return "depth " + std::to_string(*content.illegalDepth);
  std::string text = OutlineWithCorners(content.tree);
  if (content.damage) text += " line " + std::to_string(content.damage->line) + " " + content.damage->what;
  return text;
}

struct FileCase {
  const char* name;
  std::string file;
  std::string outline;
};

TEST(ZoneFile, ReadsWhatIsWhole) {
  const std::string zone = "1,1" + kHeader;
  const FileCase cases[] = {
      {"kind only", "\"Alerted\"\r\n", "Alerted"},
      {"no line end", "\"Alerted\"", "Alerted"},
      {"other words", "\"alerted\"\r\n", "Non-Alert"},
      {"byte order mark", "\xEF\xBB\xBF\"Alerted\"\r\n", "Alerted"},
      {"LF, blank lines", "\n \n\"Alerted\"\n\n" + zone + "\n\n0,1,2\n \t\n", "Alerted 1:Depot 1"},
      {"one line", "\"Alerted\"," + zone + ",1,1,2,0,3,4", "Alerted 1:Depot 2"},
      {"blanks and signs", "\"Alerted\"\r\n 1 , 1 " + kHeader + "\r\n 0 , +1.5 , -2 \r\n",
       "Alerted 1:Depot 1"},
      {"text behind a quote", "\"Alerted\" now\r\n1,1,\"\"x,\"A\"\"B\",\"\",\"\",\"\"\r\n0,1,2",
       "Alerted 1:A 1"},
      {"comma, line end in a text", "\"Alerted\"\n1,1,,\"a,\nb\",c,d,e\n0,1,2", "Alerted 1:a,\nb 1"},
      {"header at the end", "\"Alerted\"\r\n" + zone + "\r\n0,1,2\r\n1,2" + kHeader + "\r\n",
       "Alerted 1:Depot 1.1:Depot 1 0"},
      {"first number of a header is anything", "\"Alerted\"\nx,1" + kHeader + "\n0,1,2", "Alerted 1:Depot 1"},
      {"the last place", "\"Alerted\"\n" + zone + "\n1,90,180\n0,-90,-180", "Alerted 1:Depot 2"},
      {"depth 2 first", "\"Alerted\"\n1,2" + kHeader + "\n0,1,2", "depth 2"},
      {"depth 0", "\"Alerted\"\n" + zone + "\n0,1,2\n1,0" + kHeader, "depth 0"},
      {"depth 3 behind 1", "\"Alerted\"\n" + zone + "\n0,1,2\n1,3" + kHeader, "depth 3"},
  };
  for (const FileCase& c : cases) EXPECT_EQ(OutlineOf(c.file), c.outline) << c.name;
}

TEST(ZoneFile, KeepsTheZonesBeforeDamage) {
  const std::string good = "\"Alerted\"\r\n1,1" + kHeader + "\r\n0,1,2\r\n";
  const std::string kept = "Alerted 1:Depot 1";
  const std::string zone = good + "1,2" + kHeader + "\r\n1,1,2\r\n";
  const FileCase cases[] = {
      {"empty", "", "Alerted line 1 holds nothing"},
      {"word for a depth", good + "1,x" + kHeader, kept + " line 4 has no nesting depth of a zone"},
      {"a part of a depth", good + "1,1.5" + kHeader, kept + " line 4 has no nesting depth of a zone"},
      {"header cut short", good + "1,1,\"\",\"D", kept + " line 4 ends within a zone"},
      {"no last corner", zone, kept + " line 5 does not say whether another corner follows"},
      {"word for a latitude", zone + "1,nan,2", kept + " line 6 has no latitude from -90 to 90"},
      {"latitude too far", zone + "0,90.001,2", kept + " line 6 has no latitude from -90 to 90"},
      {"longitude too far", zone + "0,9,-180.001", kept + " line 6 has no longitude from -180 to 180"},
      {"corner cut short", zone + "0,9", kept + " line 6 has no longitude from -180 to 180"},
      {"line ends in texts count", good + "1,2,\"\r\n\",\"\",\"\",\"\",\"\"\r\n0,x,1",
       kept + " line 6 has no latitude from -90 to 90"},
  };
  for (const FileCase& c : cases) EXPECT_EQ(OutlineOf(c.file), c.outline) << c.name;
}

TEST(ZoneFile, IsWrittenAsItIsRead) {
  const std::string file =
      "\"Non-Alert\"\r\n"
      "1,1,\"kept\",\"R&D \xC3\xA9 <b>\",\"SMTWTFS\",\"0000\",\"0000\"\r\n"
      "1,40.1,-75.2\r\n1,5,-0.0000001\r\n0,0,180\r\n"
      "1,2,\"\",\"Loading bay\",\"-MTWTF-\",\"0800\",\"1730\"\r\n"
      "1,5,-75\r\n0,5.5,-75\r\n"
      "1,1,\"\",\"Office\",\"SMTWTFS\",\"0000\",\"0000\"\r\n"
      "0,40.123456789012345,-75.100000000000001\r\n";
  const std::string written = WriteZones(ReadZones(file).tree);
  EXPECT_EQ(written.substr(0, written.rfind("0,40.1")), file.substr(0, file.rfind("0,40.1")));
  EXPECT_EQ(written.substr(written.rfind("0,40.1")), "0,40.123456789012344,-75.1\r\n");

  ZoneTreeBuilder builder(ZoneKind::kAlerted);
  builder.Append(1, {"", "a \"quoted\" name"}, {});
  builder.Append(1, {}, std::vector<ZoneVertex>{{-0.0, std::numeric_limits<double>::denorm_min()}});
  const ZoneTree tree = builder.Build();
  EXPECT_NE(WriteZones(tree).find("\"a 'quoted' name\""), std::string::npos);
  EXPECT_NE(WriteZones(tree).find("\r\n0,0,0.000"), std::string::npos);
  EXPECT_EQ(ReadZones(WriteZones(tree)).tree.At(0).vertexCount, 1u);  // the format knows no zone without
  EXPECT_EQ(ReadZones(WriteZones(tree)).tree.AllVertices()[1].lng, std::numeric_limits<double>::denorm_min());
}

TEST(ZoneFile, GivesAnyTreeBack) {
  std::mt19937 random(5);
  for (int round = 0; round < 200; ++round) {
    const ZoneTree tree = RandomZones(random, 1 + static_cast<int>(random() % 40));
    EXPECT_EQ(ReadZones(WriteZones(tree)).tree, tree);
  }
}

TEST(ZoneFile, ADepthOfAHundredThousandIsReadAndWritten) {
  std::string file = "\"Alerted\"\r\n";
  constexpr int kDepth = 100'000;
  for (int depth = 1; depth <= kDepth; ++depth)
    file += "1," + std::to_string(depth) + kHeader + "\r\n0,40,-75\r\n";
  const ZoneTree tree = ReadZones(file).tree;
  ASSERT_EQ(tree.Count(), kDepth);
  EXPECT_EQ(tree.At(0).subtreeEnd, kDepth);
  EXPECT_EQ(tree.Section(3), "1.1.1.1");
  EXPECT_EQ(WriteZones(tree), file);
}

}  // namespace
}  // namespace pallomir
