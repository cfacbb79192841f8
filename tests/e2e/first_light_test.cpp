#include <gtest/gtest.h>
#include <signal.h>

#include <cmath>
#include <cstdio>
#include <ctime>
#include <memory>

#include "base/number_format.h"
#include "e2e/program_folder.h"
#include "map/map_bridge.h"
#include "map/map_view.h"
#include "map/projection.h"

// The real station and the real client: a recording is imported, streamed, drawn into tiles and shown by the
// page.

namespace pallomir::e2e {
namespace {

namespace fs = std::filesystem;
using fakes::Process;

constexpr char kAddress[] = "127.0.11.1";  // this test's own
constexpr char kUnit[] = "0013A20040B1";
constexpr std::size_t kScreenWidth = 1024, kScreenHeight = 768;

struct Fix {
  double lat;
  double lng;
};

// A spiral of 240 fixes, ten seconds apart.
std::vector<Fix> Recording() {
  std::vector<Fix> fixes;
  for (int i = 0; i < 240; ++i) {
    const double turn = i * 0.11;
    const double reach = 0.002 + i * 0.00012;
    fixes.push_back({40.62 + reach * std::sin(turn), -75.37 + reach * 1.3 * std::cos(turn)});
  }
  return fixes;
}

std::string Gpx(const std::vector<Fix>& fixes, Millis start) {
  std::string gpx = "<gpx version=\"1.1\" xmlns=\"http://www.topografix.com/GPX/1/1\"><trk><trkseg>";
  for (std::size_t i = 0; i < fixes.size(); ++i) {
    std::string time = IsoText(start + static_cast<Millis>(i) * 10 * kSecond);
    time[10] = 'T';
    char point[200];
    std::snprintf(point, sizeof point, "<trkpt lat=\"%.7f\" lon=\"%.7f\"><time>%sZ</time></trkpt>",
                  fixes[i].lat, fixes[i].lng, time.c_str());
    gpx += point;
  }
  return gpx + "</trkseg></trk></gpx>";
}

std::vector<DataPoint> StoredPoints(const std::vector<Fix>& fixes) {
  std::vector<DataPoint> points;
  for (const Fix& fix : fixes)
    points.push_back(
        {0, LngToWorldX(DegreesToPositionUnits(fix.lng)), LatToWorldY(DegreesToPositionUnits(fix.lat)), 0});
  return points;
}

class FirstLight : public testing::Test {
 protected:
  // The recording as a file of the last hour, whatever the day and zone.
  void ImportRecording() {
    const fs::path gpx = program_.Path() / "spiral.gpx";
    fakes::WriteFile(gpx, Gpx(Recording(), (std::time(nullptr) - 3000) * kSecond));
    Process import({PALLOMIR_STATION, "--data", program_.Data(), "import", "--unit", kUnit, gpx});
    ASSERT_EQ(import.Wait(), 0) << import.Output();
    ASSERT_NE(import.Output().find("240 points taken, 0 left out"), std::string::npos) << import.Output();
  }

  std::unique_ptr<Process> StartStation() {
    auto station = std::make_unique<Process>(std::vector<std::string>{
        PALLOMIR_STATION, "--address", kAddress, "--data", program_.Data(), "--demo", "off"});
    EXPECT_TRUE(station->Await("pallomir-station ready")) << station->Output();
    return station;
  }

  // An X server of the test's own, with a window manager.
  void StartDisplay() {
    display_ = std::make_unique<Process>(std::vector<std::string>{"Xvfb", "-displayfd", "1", "-screen", "0",
                                                                  "1024x768x24", "-nolisten", "tcp"});
    std::optional<std::string> number = display_->Await("");
    while (number && !ParseInteger(*number)) number = display_->Await("");
    ASSERT_TRUE(number) << display_->Output();
    displayName_ = ":" + *number;
    windowManager_ = std::make_unique<Process>(std::vector<std::string>{"openbox"}, Environment());
  }

  std::map<std::string, std::string> Environment() const {
    auto environment = fakes::ClientEnvironment(program_.Path(), "xcb");
    environment.emplace("DISPLAY", displayName_);
    return environment;
  }

  std::unique_ptr<Process> StartClient() {
    return std::make_unique<Process>(std::vector<std::string>{program_.App() / "pallomir"}, Environment());
  }

  // The colours of the screen's pixels, row by row, three bytes each.
  std::string Screenshot() {
    const fs::path file = program_.Path() / "screen.ppm";
    Process shot({"import", "-window", "root", "-depth", "8", file}, Environment());
    EXPECT_EQ(shot.Wait(), 0) << shot.Output();
    const std::string image = fakes::ReadFile(file);
    const std::size_t size = kScreenWidth * kScreenHeight * 3;
    EXPECT_GT(image.size(), size);
    return image.substr(image.size() - std::min(size, image.size()));
  }

  const ProgramFolder program_{kAddress,
                               {{"LoadOnStartup", "Load Last 24 Hrs Data"},
                                {"Mobile Units", std::string("X") + kUnit + "Spiral~"},
                                {"WindowPos_L", "0"},
                                {"WindowPos_T", "0"}}};
  std::unique_ptr<Process> display_;
  std::unique_ptr<Process> windowManager_;
  std::string displayName_;
};

// The share of the points whose red cross shows where it belongs on the map of this size, at the best of the
// few offsets by which a page may round its centre.
double ShareOnScreen(const std::string& screen, const std::vector<DataPoint>& points, PixelSize map) {
  MapView view;
  FitToBox(view, BoxOf(points), {map.width + 18, map.height});
  SetTileZoom(view, view.RequestedZoom);
  const auto isRed = [&](int x, int y) {
    const std::size_t at = 3 * (static_cast<std::size_t>(y) * kScreenWidth + static_cast<std::size_t>(x));
    return screen.compare(at, 3, std::string("\xFF\0\0", 3)) == 0;
  };
  double best = 0;
  for (int dx = -2; dx <= 2; ++dx) {
    for (int dy = 20; dy <= 50; ++dy) {  // the caption line lies above the map
      const auto seen = std::count_if(points.begin(), points.end(), [&](const DataPoint& point) {
        return isRed(point.x / view.UnitsPerPixel - view.CentreX / view.UnitsPerPixel + map.width / 2 + dx,
                     point.y / view.UnitsPerPixel - view.CentreY / view.UnitsPerPixel + map.height / 2 + dy);
      });
      best = std::max(best, static_cast<double>(seen) / static_cast<double>(points.size()));
    }
  }
  return best;
}

// The size of the page's map, which fills its room: larger than what the client named, and traced, last.
PixelSize MapSize(const std::string& trace) {
  PixelSize size;
  const std::size_t at = trace.rfind("X=");
  if (at != std::string::npos) std::sscanf(trace.c_str() + at, "X=%d&Y=%d", &size.width, &size.height);
  return {size.width + 3, size.height + 5};
}

TEST_F(FirstLight, ARecordingGoesFromTheFileToTheScreen) {
  ImportRecording();
  const auto station = StartStation();
  StartDisplay();
  auto client = StartClient();
  ASSERT_TRUE(client->Await(kPageReadyLine)) << client->Output();

  const PixelSize map = MapSize(client->Output());
  ASSERT_GT(map.width, 500);
  const std::vector<DataPoint> points = StoredPoints(Recording());
  // The page asks for every tile in view; the last one that was answered may still be on its way to the
  // screen.
  double share = 0;
  for (int attempt = 0; attempt < 50 && share < 0.95; ++attempt) {
    share = ShareOnScreen(Screenshot(), points, map);
  }
  EXPECT_GE(share, 0.95) << "of the points are seen\n" << client->Output();

  Process second({program_.App() / "pallomir"}, Environment());
  // Its message is in front when it is there; Return means nothing to the first client.
  int ended = -1000;
  for (int attempt = 0; attempt < 100 && ended == -1000; ++attempt) {
    Process({"xdotool", "key", "Return"}, Environment()).Wait();
    ended = second.Wait(std::chrono::milliseconds(200));
  }
  EXPECT_EQ(ended, 0) << second.Output();

  client->Signal(SIGKILL);
  EXPECT_EQ(client->Wait(), -SIGKILL);
  client = StartClient();
  ASSERT_TRUE(client->Await(kPageReadyLine)) << "a killed client must not keep the next one out\n"
                                             << client->Output();
  client->Signal(SIGTERM);
  EXPECT_EQ(client->Wait(), 0) << client->Output();
  EXPECT_EQ(ParseSettings(fakes::ReadFile(program_.Registry())).damagedLines, 0u);
}

}  // namespace
}  // namespace pallomir::e2e
