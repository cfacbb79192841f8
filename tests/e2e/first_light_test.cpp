#include <gtest/gtest.h>
#include <png.h>
#include <signal.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <ctime>
#include <memory>

#include "base/number_format.h"
#include "fakes/process.h"
#include "fakes/temporary_folder.h"
#include "map/map_bridge.h"
#include "map/map_view.h"
#include "map/projection.h"
#include "oracles/literal_rules.h"
#include "settings/settings_store.h"

// The real station and the real client: a recording is imported, streamed, drawn into tiles and shown by the
// page.

namespace pallomir::e2e {
namespace {

namespace fs = std::filesystem;
using fakes::Process;

constexpr char kAddress[] = "127.0.11.1";  // this test's own
constexpr char kUnit[] = "0013A20040B1";
constexpr int kWindowWidth = 900;
constexpr int kWindowHeight = 640;

struct Image {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;  // 0xAARRGGBB
  std::uint32_t At(int x, int y) const {
    return x < 0 || y < 0 || x >= width || y >= height ? 0 : pixels[static_cast<std::size_t>(y * width + x)];
  }
};

Image ReadPng(const fs::path& file) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  EXPECT_TRUE(png_image_begin_read_from_file(&image, file.c_str())) << file << image.message;
  image.format = PNG_FORMAT_BGRA;
  Image result{static_cast<int>(image.width), static_cast<int>(image.height), {}};
  result.pixels.resize(static_cast<std::size_t>(image.width) * image.height);
  EXPECT_TRUE(png_image_finish_read(&image, nullptr, result.pixels.data(), 0, nullptr)) << image.message;
  return result;
}

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
  for (const Fix& fix : fixes) {
    // The file has seven decimals.
    const auto units = [](double degrees) { return DegreesToPositionUnits(std::round(degrees * 1e7) / 1e7); };
    points.push_back({static_cast<std::uint32_t>(points.size()), LngToWorldX(units(fix.lng)),
                      LatToWorldY(units(fix.lat)), 0});
  }
  return points;
}

class FirstLight : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* name :
         {"profile", "share", "share/pallomir", "share/pallomir/Data", "config", "runtime"}) {
      fs::create_directory(folder_.Path() / name);
    }
    fs::permissions(folder_.Path() / "runtime", fs::perms::owner_all);
    fs::copy(PALLOMIR_FOLDER, App(), fs::copy_options::recursive);
    fakes::WriteFile(App() / "deployment.ini",
                     std::string("WebsiteServer=") + kAddress + "\nWebSite=" + kAddress + ":2480\n");
    const auto line = [](const char* key, const std::string& value) {
      return SettingsLine("pallomir browser~Startup~" + std::string(key), value) + "\r\n";
    };
    fakes::WriteFile(Registry(), line("Demo Mode", "False") + line("LoadOnStartup", "Load Last 24 Hrs Data") +
                                     line("Mobile Units", std::string("X") + kUnit + "Spiral~") +
                                     line("WindowState", "0") + line("WindowPos_L", "0") +
                                     line("WindowPos_T", "0") +
                                     line("WindowPos_W", std::to_string(kWindowWidth)) +
                                     line("WindowPos_H", std::to_string(kWindowHeight)));
  }

  fs::path App() const { return folder_.Path() / "app"; }
  fs::path Registry() const { return folder_.Path() / "share/pallomir/Registry.txt"; }
  fs::path Data() const { return folder_.Path() / "share/pallomir/Data"; }

  // The recording as a file of the last hour, whatever the day and zone.
  void ImportRecording() {
    const fs::path gpx = folder_.Path() / "spiral.gpx";
    fakes::WriteFile(gpx, Gpx(Recording(), (std::time(nullptr) - 3000) * kSecond));
    Process import({PALLOMIR_STATION, "--data", Data(), "import", "--unit", kUnit, gpx});
    ASSERT_EQ(import.Wait(), 0) << import.Output();
    ASSERT_NE(import.Output().find("240 points taken, 0 left out"), std::string::npos) << import.Output();
  }

  std::unique_ptr<Process> StartStation() {
    auto station = std::make_unique<Process>(
        std::vector<std::string>{PALLOMIR_STATION, "--address", kAddress, "--data", Data(), "--demo", "off"});
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
    auto environment = fakes::ClientEnvironment(folder_.Path(), "xcb");
    environment.emplace("DISPLAY", displayName_);
    return environment;
  }

  std::unique_ptr<Process> StartClient() {
    return std::make_unique<Process>(std::vector<std::string>{App() / "pallomir"}, Environment());
  }

  Image Screenshot() {
    const fs::path file = folder_.Path() / "screen.png";
    Process shot({"import", "-window", "root", "PNG32:" + file.string()}, Environment());
    EXPECT_EQ(shot.Wait(), 0) << shot.Output();
    return ReadPng(file);
  }

  fakes::TemporaryFolder folder_;
  std::unique_ptr<Process> display_;
  std::unique_ptr<Process> windowManager_;
  std::string displayName_;
};

// What the rule draws for the recording at the zoom that fits it.
struct Expected {
  int zoom = 0;
  WorldPoint centre;
  oracles::LiteralTiles tiles;
};

Expected ExpectedTiles(const std::vector<DataPoint>& points, PixelSize browser) {
  MapView view;
  FitToBox(view, BoxOf(points), browser);
  SetTileZoom(view, view.RequestedZoom);
  TrackDrawing drawing;
  drawing.units = {points};
  drawing.CentreX = view.CentreX;
  drawing.CentreY = view.CentreY;
  drawing.UnitsPerPixel = view.UnitsPerPixel;
  drawing.TileZoom = view.TileZoom;
  drawing.browser = browser;
  return {view.TileZoom, {view.CentreX, view.CentreY}, oracles::LiteralDraw(drawing, 0).tiles};
}

// The share of the rule's pixels within the inner map area that the screen shows in their colour, at the best
// of the few offsets by which a page may round its centre.
double ShareOnScreen(const Image& screen, const Expected& expected, int mapWidth, int mapHeight) {
  const int unit = 1 << (22 - expected.zoom);
  double best = 0;
  for (int dx = -2; dx <= 2; ++dx) {
    for (int dy = 20; dy <= 50; ++dy) {  // the caption line lies above the map
      int marked = 0;
      int seen = 0;
      for (const auto& [name, marks] : expected.tiles) {
        const int left = static_cast<int>(*ParseHex(name.substr(6, 6))) * 256;
        const int top = static_cast<int>(*ParseHex(name.substr(12, 6))) * 256;
        for (int x = 0; x < 256; ++x) {
          for (int y = 0; y < 256; ++y) {
            const auto colour = marks[static_cast<std::size_t>(x)][static_cast<std::size_t>(y)];
            const int sx = left + x - expected.centre.x / unit + mapWidth / 2 + dx;
            const int sy = top + y - expected.centre.y / unit + mapHeight / 2 + dy;
            const bool inner = sx >= 60 && sx < mapWidth - 60 && sy >= 60 && sy < mapHeight - 60;
            if (colour == 0 || !inner) continue;
            ++marked;
            seen += screen.At(sx, sy) == kTrackPalette[colour];
          }
        }
      }
      if (marked > 0) best = std::max(best, static_cast<double>(seen) / marked);
    }
  }
  return best;
}

// The size of the page's map, which fills its room: larger than what the client named, and traced, last.
PixelSize MapSize(const std::string& trace) {
  PixelSize size;
  const std::size_t at = trace.rfind("X=");
  if (at != std::string::npos) std::sscanf(trace.c_str() + at, "X=%d&Y=%d", &size.width, &size.height);
  size.width += 3;
  size.height += 5;
  return size;
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
  const Expected expected = ExpectedTiles(points, {map.width + 18, map.height});
  // The page asks for every tile in view; the last one that was answered may still be on its way to the
  // screen.
  double share = 0;
  for (int attempt = 0; attempt < 50 && share < 0.98; ++attempt) {
    share = ShareOnScreen(Screenshot(), expected, map.width, map.height);
  }
  EXPECT_GE(share, 0.98) << "of the track's pixels are seen\n" << client->Output();

  Process second({App() / "pallomir"}, Environment());
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
  const ParsedSettings settings = ParseSettings(fakes::ReadFile(Registry()));
  EXPECT_EQ(settings.damagedLines, 0u);
  ASSERT_TRUE(settings.table.Find("pallomir browser~Startup~WindowState"));
  EXPECT_EQ(*settings.table.Find("pallomir browser~Startup~WindowState"), "0");
}

}  // namespace
}  // namespace pallomir::e2e
