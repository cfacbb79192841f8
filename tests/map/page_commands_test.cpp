#include "map/page_commands.h"

#include <gtest/gtest.h>

namespace pallomir {
namespace {

template <class Command>
Command Parsed(const std::string& text) {
  const PageCommand command = ParsePageCommand(text);
  EXPECT_TRUE(std::holds_alternative<Command>(command)) << text;
  return std::holds_alternative<Command>(command) ? std::get<Command>(command) : Command{};
}

TEST(PageCommands, FieldsStandAtTheirPositions) {
  const auto click = Parsed<page::PopupAtPlace>("F0024375540-045222180");
  EXPECT_EQ(click.lat, 24375540);
  EXPECT_EQ(click.lng, -45222180);
  const auto move = Parsed<page::MouseMoved>("m123.60004.+024375540-045222180017");
  EXPECT_EQ(move.x, 124);
  EXPECT_EQ(move.y, 4);
  EXPECT_EQ(move.zoom, 17);
  for (const auto& [text, x] :
       {std::pair{"000.5", 0}, {"001.5", 2}, {"002.5", 2}, {"-02.5", -2}, {"-01.5", -2}})
    EXPECT_EQ(Parsed<page::MouseMoved>("m" + std::string(text) + "0004.+024375540-045222180017").x, x)
        << text;
  const auto pan = Parsed<page::Panned>("M-40.5,+175.25");
  EXPECT_EQ(pan.lat, -40.5);
  EXPECT_EQ(pan.lng, 175.25);
  const auto tile = Parsed<page::TileQuestion>("TT1100C800006000");
  EXPECT_EQ(tile.kind, page::TileQuestion::Kind::kTrack);
  EXPECT_EQ(tile.zoom, 17);
  EXPECT_EQ(tile.suffix, "1100C800006000");
  EXPECT_EQ(Parsed<page::Zoomed>("Z9").zoom, 9);
  EXPECT_EQ(Parsed<page::Zoomed>("Z2147483647").zoom, 2147483647);
  EXPECT_EQ(Parsed<page::Zoomed>("Z-2147483648").zoom, -2147483647 - 1);
  for (const char* edge : {"M0,-180", "M0,180", "M89.9,0"}) Parsed<page::Panned>(edge);
  EXPECT_EQ(Parsed<page::Status>("S99").number, 99);
  EXPECT_EQ(Parsed<page::ZoneEdit>("zF1~2~").payload, "1~2~");
}

TEST(PageCommands, NonsenseIsToldApart) {
  for (const char* text : {"M", "M1", "M1,", "M,1", "M90,0", "M-90,0", "M0,180.1", "M0,-180.1", "Z2147483648",
                           "Mnan,0", "F", "F0054000000+000000000", "Z", "Z1.5", "Z99999999999", "S", "m",
                           "mxxxxxyyyyy00000000000000000000012", "m9e3000000000000000000000000000000012"}) {
    EXPECT_TRUE(std::holds_alternative<page::Malformed>(ParsePageCommand(text))) << text;
  }
  for (const char* text : {"", "c12345", "r", "t", "x", " Z9"}) {
    EXPECT_TRUE(std::holds_alternative<page::Ignored>(ParsePageCommand(text))) << text;
  }
  EXPECT_EQ(Parsed<page::TileQuestion>("T").kind, page::TileQuestion::Kind::kUnknown);
  EXPECT_EQ(Parsed<page::TileQuestion>("TT1").zoom, -1);
  EXPECT_EQ(Parsed<page::TileQuestion>("TTG1000000000000").suffix, "");
}

TEST(PageCommands, GeocodeTextEndsWithTwoFillers) {
  const std::pair<const char*, const char*> cases[] = {{"Main%20St%2E%20%20", "Main St."},
                                                       {"%52%FCgen%20%20", "R\xC3\xBCgen"},
                                                       {"caf%E9%FF%BF", "caf\xC3\xA9"},
                                                       {"%80%20%20", "\xC2\x80"},
                                                       {"ab%41%", "a"},
                                                       {"%20%20", ""},
                                                       {"%20", ""},
                                                       {"", ""},
                                                       {"no escape", ""},
                                                       {"a%2x", ""}};
  for (const auto& [encoded, text] : cases) EXPECT_EQ(DecodeGeocode(encoded), text) << encoded;
}

}  // namespace
}  // namespace pallomir
