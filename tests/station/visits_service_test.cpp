#include "station/visits_service.h"

#include <semaphore>
#include <thread>

#include "station/station_testing.h"
#include "station/store/data_files.h"
#include "station/store/open_store.h"
#include "station/visits.h"
#include "station/visits_query.h"
#include "station/web/web_site.h"

namespace pallomir::station {
namespace {

const std::string kUnit = "00000000000A", kOther = "00000000000B";
const std::string kHere = "lat=0&lng=0.04";

// A track along the equator: a record a minute from noon on, a thousandth of a degree apart.
std::vector<WireRecord> Track(int from, int count) {
  std::vector<WireRecord> records;
  for (int i = from; i < from + count; ++i)
    records.push_back({EncodePackedTime(kNoon + i * kMinute).value_or(0), 0, i * 600, 0});
  return records;
}

class VisitsOverHttp : public testing::Test {
 protected:
  VisitsOverHttp() {
    const Bytes all = EncodeDataFile(Track(0, 60)), some = EncodeDataFile(Track(30, 20));
    folder_.Write("data/" + kUnit + "/1", AsText(all));
    folder_.Write("data/" + kOther + "/1", AsText(some));
    site_.Serve("/visits", VisitsService(data_), false);
  }

  TestClient Connect() {
    if (port_ == 0) port_ = site_.Start("127.0.72.5", 0);
    return TestClient({asio::ip::make_address("127.0.72.5"), static_cast<std::uint16_t>(port_)});
  }
  std::string Ask(const std::string& target, const std::string& host = "127.0.72.5:2480",
                  const std::string& method = "GET") {
    TestClient client = Connect();
    client.Send(method + " " + target + " HTTP/1.1\r\nConnection: close\r\nHost: " + host + "\r\n\r\n");
    return client.ReceiveAll();
  }
  static std::string Body(const std::string& answer) { return answer.substr(answer.find("\r\n\r\n") + 4); }

  // What the command would print, as part of an answer.
  std::string Found(VisitsCommand command) {
    command.asJson = true;
    const auto outcome = FindVisits(command, *OpenStore(data_, [](const std::string&) {}));
    return "{\"visits\":" + outcome.list.substr(0, outcome.list.size() - 1) + ",";
  }

  TemporaryFolder folder_;
  const std::filesystem::path data_ = folder_.Path() / "data";
  WebSite site_{folder_.Path() / "web"};
  int port_ = 0;
};

TEST_F(VisitsOverHttp, AreThoseOfTheCommand) {
  VisitsCommand command;
  command.at = Place{0, 0.04};
  const std::string answer = Ask("/visits?" + kHere);
  EXPECT_TRUE(answer.starts_with("HTTP/1.1 200 OK\r\n")) << answer;
  EXPECT_NE(answer.find("Content-Type: application/json\r\n"), std::string::npos);
  EXPECT_EQ(Body(answer), Found(command) + "\"records\":80,\"files\":2,\"problem\":\"\"}\n");
  EXPECT_NE(answer.find("12:39:00Z\",\"exit\":\"2026-11-22T12:41:00Z\",\"records\":3}"), std::string::npos);
  const std::string head = Ask("/visits?" + kHere, "localhost", "HEAD");
  EXPECT_NE(head.find("Content-Length: " + std::to_string(Body(answer).size())), std::string::npos);
  EXPECT_EQ(Body(head), "");

  command.zoom = 11;
  EXPECT_TRUE(Body(Ask("/visits?" + kHere + "&zoom=11")).starts_with(Found(command)));
  command.radius = 200;
  EXPECT_TRUE(Body(Ask("/visits?" + kHere + "&radius=200")).starts_with(Found(command)));
  command.at.reset();
  command.box = DegreeBox{-1, 1, 0.0205, 0.0395};
  command.unitIds = {kOther};
  command.from = kNoon + 31 * kMinute;
  command.until = kNoon + 35 * kMinute;
  EXPECT_TRUE(Body(Ask("/visits?minLat=-1&maxLat=1&minLng=0.0205&maxLng=0.0395&unit=00000000000b"
                       "&from=2026-11-22T12:31:00Z&to=2026-11-22T13:35:00%2B01:00"))
                  .starts_with(Found(command)));
  EXPECT_NE(Found(command).find("12:31:00Z\",\"exit\":\"2026-11-22T12:35:00Z\",\"records\":5}"),
            std::string::npos);
  EXPECT_EQ(Body(Ask("/visits?lat=50&lng=8&limit=1")),
            "{\"visits\":[\n],\"records\":80,\"files\":2,\"problem\":\"\"}\n");
}

TEST_F(VisitsOverHttp, SayWhatEndedTheSearch) {
  folder_.Write("data/" + kOther + "/0\n\"\xFF", "torn");
  VisitsCommand command;
  command.at = Place{0, 0.04};
  EXPECT_EQ(
      Body(Ask("/visits?" + kHere)),
      Found(command) + R"("records":80,"files":1,"problem":"Error 65387: Corrupted file -- 0\n\"?"})" + "\n");
  EXPECT_NE(Found(command).find(kOther), std::string::npos) << "found before";
  const WebAnswer late = VisitsService(data_, std::chrono::seconds(-1))(kHere, {});
  EXPECT_NE(late.text.find("too long"), std::string::npos);
  std::filesystem::remove_all(data_);
  EXPECT_NE(Body(Ask("/visits?" + kHere)).find("There is no data folder"), std::string::npos);
}

TEST(VisitsQueries, AreReadOrRefusedWithASentence) {
  const std::string box = "minLat=1&maxLat=2&minLng=3&maxLng=4";
  const struct {
    std::string query;
    const char* complaint;
  } cases[] = {
      {kHere, nullptr},
      {"lat=-90&lng=180&zoom=22&limit=500", nullptr},
      {"lat=0&lng=0&radius=1000000", nullptr},
      {box + "&to=2026-11-22&limit=1&&", nullptr},
      {"minLat=-91&maxLat=91&minLng=-1e9&maxLng=1000", nullptr},
      {"", "Say where"},
      {"lat=1", "Say where"},
      {box + "&" + kHere, "Say where"},
      {"minLat=1&maxLat=2&minLng=3", "maxLng is missing"},
      {"minLat=2&maxLat=1&minLng=3&maxLng=4", "minLat lies above"},
      {"minLat=1&maxLat=2&minLng=4&maxLng=3", "minLng lies above"},
      {"lat=91&lng=0", "lat is no number from -90 to 90"},
      {"lat=nan&lng=0", "lat is no number"},
      {"lat=0&lng=-180.1", "lng is no number"},
      {kHere + "&zoom=23", "zoom is no number from 0 to 22"},
      {kHere + "&zoom=1.5", "zoom is no whole"},
      {kHere + "&radius=0", "radius is no number from 0.1 to"},
      {kHere + "&limit=0", "limit is no number from 1 to 500"},
      {kHere + "&limit=501", "limit is"},
      {kHere + "&unit=12", "unit is no ID"},
      {kHere + "&from=yesterday", "from is no time"},
      {kHere + "&to=2026-02-30T00:00:00Z", "to is no time"},
      {kHere + "&lat=0", "lat is given twice"},
      {kHere + "&zone=1", "unknown name"},
      {kHere + "&unit=%4", "A % in the query"},
  };
  for (const auto& c : cases) {
    const auto read = ParseVisitsQuery(c.query);
    const auto* complaint = std::get_if<std::string>(&read);
    EXPECT_EQ(complaint == nullptr, c.complaint == nullptr) << c.query << (complaint ? *complaint : "");
    EXPECT_TRUE(!complaint || !c.complaint || complaint->find(c.complaint) != std::string::npos)
        << *complaint;
  }
}

TEST_F(VisitsOverHttp, AreForThisComputerAlone) {
  site_.Serve(
      "/open",
      [](const std::string& query, const std::stop_token&) {
        return WebAnswer{"200 OK", "text/plain", query, ""};
      },
      true);
  EXPECT_TRUE(Ask("/visits?lat=x").starts_with("HTTP/1.1 400"));
  for (const char* host : {"localhost", "127.0.0.1", ""})
    EXPECT_TRUE(Ask("/visits?" + kHere, host).starts_with("HTTP/1.1 200")) << host;
  for (const char* host : {"pages.example.org", "pages.example.org:2480", "127.0.0.1.example.org"})
    EXPECT_TRUE(Ask("/visits?" + kHere, host).starts_with("HTTP/1.1 403")) << host;
  EXPECT_EQ(Body(Ask("/open?a=%20b", "pages.example.org")), "a=%20b");
}

TEST_F(VisitsOverHttp, AreTheOldOrTheNewOnesDuringAnImport) {
  const auto store = OpenStore(data_, [](const std::string&) {});
  std::jthread import([&](const std::stop_token& stop) {
    for (int i = 60; i < 600 && !stop.stop_requested(); i += 3) {
      std::string problem;
      store->StartWriting(std::chrono::seconds(20), problem)->Merge(kUnit, Track(i, 3));
    }
  });
  for (int i = 0; i < 30; ++i) {
    const std::string answer = Ask("/visits?" + kHere);
    EXPECT_NE(answer.find("\"problem\":\"\""), std::string::npos) << answer;
    EXPECT_NE(answer.find("12:39:00Z\",\"exit\":\"2026-11-22T12:41:00Z\",\"records\":3},"),
              std::string::npos);
  }
}

// Answers only once it is told to stop.
class Endless : public VisitsOverHttp {
 protected:
  Endless() {
    site_.Serve(
        "/endless",
        [this](const std::string&, const std::stop_token& stop) {
          begun_.release();
          std::binary_semaphore stopped(0);
          const std::stop_callback callback(stop, [&] { stopped.release(); });
          stopped.acquire();
          ended_.release();
          return WebAnswer{"200 OK", "text/plain", "", ""};
        },
        false);
  }

  void Begin(TestClient& client) {
    client.Send("GET /endless HTTP/1.1\r\n\r\nGET /visits");
    begun_.acquire();
  }

  std::counting_semaphore<> begun_{0}, ended_{0};
};

TEST_F(Endless, WorkEndsWithItsBrowserAndIsNoMoreThanTwo) {
  TestClient first = Connect(), second = Connect();
  Begin(first);
  Begin(second);
  const std::string third = Ask("/visits?" + kHere);
  EXPECT_TRUE(third.starts_with("HTTP/1.1 503")) << third;
  EXPECT_NE(third.find("Retry-After: "), std::string::npos);
  EXPECT_TRUE(Ask("/none").starts_with("HTTP/1.1 404")) << "the site goes on";
  first.Close();
  ended_.acquire();
  std::string answer;
  do answer = Ask("/visits?" + kHere);  // its place is free a moment after its end
  while (answer.starts_with("HTTP/1.1 503"));
  EXPECT_TRUE(answer.starts_with("HTTP/1.1 200")) << answer;
  // The second is at work when the site is gone.
}

}  // namespace
}  // namespace pallomir::station
