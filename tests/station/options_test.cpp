#include "station/options.h"

#include "station/station_testing.h"

namespace pallomir::station {
namespace {

class CommandLines : public testing::Test {
 protected:
  TemporaryFolder folder_;

  CommandLine Good(std::vector<std::string> arguments) {
    auto parsed = ParseCommandLine(std::move(arguments), folder_.Path());
    if (const auto* nothing = std::get_if<NothingToRun>(&parsed)) {
      ADD_FAILURE() << nothing->text;
      return {};
    }
    return std::get<CommandLine>(parsed);
  }
  NothingToRun Bad(std::vector<std::string> arguments) {
    auto parsed = ParseCommandLine(std::move(arguments), folder_.Path());
    return std::holds_alternative<CommandLine>(parsed) ? NothingToRun{} : std::get<NothingToRun>(parsed);
  }
};

TEST_F(CommandLines, WinOverTheIniFile) {
  folder_.Write("station.ini",
                "# a comment\r\n\n Address = 0.0.0.0\r\nAdvertisedAddress=\nPortBase=19001\nDemo=off\n"
                "Data=/a folder, with # and [brackets]\nVisits=everyone\n");
  const Options options = Good({"--port-base", "20001"}).options;
  EXPECT_EQ(options.address, "0.0.0.0");
  EXPECT_EQ(options.advertisedAddress, "");
  EXPECT_EQ(options.portBase, 20001);
  EXPECT_EQ(options.data, "/a folder, with # and [brackets]");
  EXPECT_FALSE(options.isDemoOn);
  EXPECT_EQ(options.visits, VisitsFor::kEveryone);
  EXPECT_EQ(Good({"--visits", "off", "visits", "--at", "0,0"}).options.visits, VisitsFor::kNobody);
  EXPECT_EQ(Bad({"--visits", "friends"}).exitCode, kWrongOptions);
}

TEST_F(CommandLines, TakeGeneralOptionsBehindACommand) {
  const CommandLine line =
      Good({"import", "--unit", "0013a20040B1", "--today", "a.gpx", "b.gpx", "--data", "/d"});
  EXPECT_EQ(line.options.data, "/d");
  const auto& command = std::get<ImportCommand>(line.command);
  EXPECT_EQ(command.unitId, "0013A20040B1");
  EXPECT_FALSE(command.description);
  EXPECT_TRUE(command.toToday);
  EXPECT_EQ(command.files, (std::vector<std::string>{"a.gpx", "b.gpx"}));
  EXPECT_TRUE(std::get<UnitsCommand>(Good({"units", "--client-list"}).command).asClientList);
}

TEST_F(CommandLines, TakeWhatVisitsAreAskedFor) {
  const auto visits = [this](std::vector<std::string> more) {
    more.insert(more.begin(), "visits");
    return std::get<VisitsCommand>(Good(std::move(more)).command);
  };
  const VisitsCommand usual = visits({"--at", "-45.5,7"});
  EXPECT_EQ(usual.at->latitude, -45.5);
  EXPECT_EQ(usual.at->longitude, 7);
  EXPECT_EQ(usual.zoom, 13);
  EXPECT_EQ(usual.limit, 500u);
  EXPECT_FALSE(usual.radius || usual.from || usual.until || usual.asJson);
  EXPECT_EQ(usual.zones.filename(), "ZoneMenus.txt");
  const VisitsCommand other =
      visits({"--zone", "1.2", "--unit", "0013a20040B1", "--unit", "000000000001", "--from", "2026-11-21",
              "--to", "2026-11-22", "--json", "--limit", "7"});
  EXPECT_EQ(other.zone, "1.2");
  EXPECT_EQ(other.unitIds, (std::vector<std::string>{"0013A20040B1", "000000000001"}));
  EXPECT_EQ(other.from, ToMillis({2026, 11, 21}));
  EXPECT_EQ(other.until, ToMillis({2026, 11, 22, 23, 59, 59}));
  EXPECT_TRUE(other.asJson);
  EXPECT_EQ(visits({"--at", "0,0", "--to", "2026-11-22T15:00:00+01:00"}).until,
            ToMillis({2026, 11, 22, 14, 0, 0}));
}

TEST_F(CommandLines, TakeAnOnlineMapWithItsAttribution) {
  EXPECT_FALSE(Good({}).options.onlineMap);
  folder_.Write("station.ini",
                "OnlineMap=https://{s}.example.org/{z}/{x}/{y}.png  \xC2\xA9 Makers, \"all\" of them \n");
  const auto map = Good({}).options.onlineMap;
  ASSERT_TRUE(map);
  EXPECT_EQ(map->url, "https://{s}.example.org/{z}/{x}/{y}.png");
  EXPECT_EQ(map->attribution, "\xC2\xA9 Makers, \"all\" of them");
  folder_.Write("station.ini", "OnlineMap=\n");
  EXPECT_FALSE(Good({}).options.onlineMap);
}

TEST_F(CommandLines, SayWhatIsWrong) {
  const struct {
    std::string ini;
    std::vector<std::string> arguments;
    std::string mentions;
  } cases[] = {
      {"", {"--port-base", "2"}, "--port-base"},
      {"", {"--web-port", "65536"}, "--web-port"},
      {"", {"--locator-port", "many"}, "--locator-port"},
      {"", {"--address", "localhost"}, "--address"},
      {"", {"--colour", "red"}, "--colour"},
      {"", {"--demo", "perhaps"}, "--demo"},
      {"", {"serve"}, "serve"},
      {"", {"import", "a.gpx"}, "--unit"},
      {"", {"import", "--unit", "0013A20040B1"}, "files"},
      {"", {"import", "--unit", "0013A20040G1", "a.gpx"}, "unit ID"},
      {"", {"--config", "/nowhere/station.ini"}, "/nowhere/station.ini"},
      {"", {"visits"}, "--at"},
      {"", {"visits", "--at", "45,7", "--zone", "1"}, "--zone"},
      {"", {"visits", "--at", "91,7"}, "--at"},
      {"", {"visits", "--at", "45"}, "--at"},
      {"", {"visits", "--at", "45,7", "--zoom", "23"}, "--zoom"},
      {"", {"visits", "--at", "45,7", "--zoom", "9", "--radius", "5"}, "--radius"},
      {"", {"visits", "--zone", "1", "--radius", "5"}, "--at"},
      {"", {"visits", "--at", "45,7", "--from", "yesterday"}, "--from"},
      {"", {"visits", "--at", "45,7", "--to", "2026-02-30"}, "--to"},
      {"", {"visits", "--at", "45,7", "--limit", "0"}, "--limit"},
      {"", {"visits", "--at", "45,7", "--csv", "--json"}, "--json"},
      {"", {"visits", "--at", "45,7", "--unit", "7"}, "unit ID"},
      {"Demo=on\nColour=red\n", {}, "line 2"},
      {"Help=yes\n", {}, "line 1"},
      {"PortBase\n", {}, "line 1"},
      {"PortBase=0\n", {}, "port-base"},
      {"Address=256.0.0.1\n", {}, "address"},
      {"OnlineMap=https://example.org/{z}/{x}/{y}.png\n", {}, "attribution"},
      {"OnlineMap=https://example.org/{x}/{y}.png Makers\n", {}, "{z}"},
      {"OnlineMap=https://example.org/{z}/{y}.png Makers\n", {}, "{z}"},
      {"OnlineMap=https://example.org/{z}/{x}.png Makers\n", {}, "{z}"},
      {"OnlineMap=ftp://example.org/{z}/{x}/{y}.png Makers\n", {}, "online-map"},
      {"OnlineMap=https:///{z}/{x}/{y}.png Makers\n", {}, "online-map"},
      {"OnlineMap=https://{s}/{z}/{x}/{y}.png Makers\n", {}, "online-map"},
      {"OnlineMap=https://{s}:8080/{z}/{x}/{y}.png Makers\n", {}, "online-map"},
      {"OnlineMap=https://{s}.{s}.org/{z}/{x}/{y}.png Makers\n", {}, "online-map"},
      {"OnlineMap=https://{s}../{z}/{x}/{y}.png Makers\n", {}, "online-map"},
      {"OnlineMap=https://{z}.example.org/{z}/{x}/{y}.png Makers\n", {}, "online-map"},
      {"OnlineMap=https://example.org/{z}/{x}/{y}.png?key={key} Makers\n", {}, "online-map"},
      {"OnlineMap=https://example.org/{z}/{x}/{y}.png} Makers\n", {}, "online-map"},
      {"OnlineMap=https://example.org/{z}/{x}/{y}.png;script-src Makers\n", {}, "online-map"},
  };
  for (const auto& c : cases) {
    folder_.Write("station.ini", c.ini);
    const NothingToRun result = Bad(c.arguments);
    EXPECT_EQ(result.exitCode, kWrongOptions) << c.mentions;
    EXPECT_NE(result.text.find(c.mentions), std::string::npos) << result.text;
  }
  folder_.Write("station.ini", "");
  EXPECT_EQ(Bad({"--help"}).exitCode, kDone);
  EXPECT_NE(Bad({"--help"}).text.find("--advertised-address"), std::string::npos);
}

}  // namespace
}  // namespace pallomir::station
