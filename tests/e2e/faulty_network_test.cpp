#include "e2e/faulty_network.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "base/packed_time.h"
#include "e2e/process.h"
#include "fakes/fake_programs.h"
#include "fakes/fake_system.h"
#include "fakes/fake_zones_view.h"
#include "fakes/temporary_folder.h"
#include "platform/qt/qt_clock.h"
#include "platform/qt/qt_endpoints.h"
#include "platform/qt/qt_event_loop.h"
#include "shell/client.h"
#include "station/store/data_writer.h"
#include "station/store/import_lock.h"
#include "tracking/FormRetryAfterError.h"
#include "window/formMain.h"

// The real station and the real window with its real sockets, and a network between them that does what
// networks do. Only the map page is left out: its road is another one.

namespace pallomir::e2e {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;

constexpr char kUnits[][kUnitIdSize + 1] = {"0013A20040B1", "0013A20040B2"};
constexpr std::size_t kPointsAUnit = 1000;  // two packets each
constexpr std::size_t kPoints = 2 * kPointsAUnit;
constexpr std::size_t kFirstPacketSize = kPacketHeaderSize + kUnitIdSize + kRecordsPerPacket * kRecordSize;

// A connection that is not made is given up after this; the shipped patience is longer than a test's.
constexpr int kPatience = 500;

class FaultyNetworkTest : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* name : {"app", "data", "home", "home/Application Data", "tracks"})
      fs::create_directory(folder_.Path() / name);
    fakes::WriteFile(folder_.Path() / "app/ZoneMenus_Demo.txt", "\"Alerted\"\r\n");
    StoreTracks();
    StartStation();
  }

  void StartStation() {
    station_ = std::make_unique<Process>(
        std::vector<std::string>{PALLOMIR_STATION, "--address", stationSide_, "--advertised-address",
                                 clientSide_, "--data", folder_.Path() / "tracks", "--demo", "off"});
    ASSERT_TRUE(station_->Await("pallomir-station ready")) << station_->Output();
  }

  void StoreTracks() {
    const Millis last = clock_.NowUtc() / kSecond * kSecond - kMinute;
    const station::ImportLock lock(folder_.Path() / "tracks", {});
    ASSERT_EQ(lock.Problem(), "");
    for (const char* unit : kUnits) {
      std::vector<WireRecord> records;
      for (std::size_t i = 0; i < kPointsAUnit; ++i) {
        const auto n = static_cast<std::int32_t>(i);
        const Millis time = last - static_cast<Millis>(kPointsAUnit - i) * kSecond;
        records.push_back({EncodePackedTime(time).value_or(0), 24'000'000 + 60 * n, -45'000'000 - 60 * n, 0});
      }
      ASSERT_EQ(station::MergeIntoUnit(lock, unit, records).error, "");
    }
  }

  void StartClient() {
    settings_.values = {{"Demo Mode", "False"},
                        {"LoadOnStartup", "Load Last 24 Hrs Data"},
                        {"Mobile Units", std::string("X") + kUnits[0] + "A~X" + kUnits[1] + "B~"},
                        {"WindowState", "0"},
                        {"WindowPos_W", "900"},
                        {"WindowPos_H", "600"}};
    client_ = std::make_unique<Client>(
        Ports{window_,
              {window_, window_, window_.Hotspots(), window_, window_.Units(), window_, window_, window_,
               zoneWindows_},
              window_.System(),
              browser_,
              locator_,
              probe_,
              data_,
              loop_,
              clock_,
              questions_,
              settings_,
              registry_,
              mutex_,
              signal_,
              beeper_,
              programs_,
              trace_,
              Folders{folder_.Path() / "app", folder_.Path() / "data", folder_.Path() / "home"},
              Deployment{clientSide_, clientSide_ + ":2480"}});
    window_.Attach(client_->RoomsOfWindow());
    client_->Load();
    // The page is there and knows its zoom.
    for (const char* command : {"S1", "M40.0,-75.0", "Z12"})
      browser_.beforeNavigate("http://" + clientSide_ + ":2480/dummy/" + command);
  }

  void TearDown() override {
    if (client_) window_.close();
  }

  // Addresses of this test's own, and more of them for what can run beside it.
  static std::string Address(int last) {
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    const bool isSlow = std::string_view(test->test_suite_name()) == "NetworkPatience";
    return (isSlow ? "127.0.62." : "127.0.61.") + std::to_string(last);
  }
  std::string Caption() { return window_.findChild<QLabel*>("lblCaption")->text().toStdString(); }
  std::string Lamp() { return window_.findChild<QWidget*>("picLamp")->toolTip().toStdString(); }

  QDialog* RetryDialog() {
    auto* dialog = window_.findChild<QDialog*>("FormRetryAfterError");
    return dialog && dialog->isVisible() ? dialog : nullptr;
  }

  std::string RetryText() {
    QDialog* dialog = RetryDialog();
    return dialog ? dialog->findChild<QLabel*>("lblMessage")->text().toStdString() : "";
  }

  bool Await(const std::function<bool()>& what, milliseconds patience = std::chrono::seconds(20)) {
    return QTest::qWaitFor(what, static_cast<int>(patience.count()));
  }

  // What a user would do now.
  void TryAgain() {
    if (QDialog* dialog = RetryDialog())
      dialog->findChild<QPushButton*>("cmdRetryNow")->click();
    else
      client_->Pickers().ReloadClicked();
  }

  void ExpectAllPoints() {
    const auto holds = [](const std::string& text, const std::string& part) {
      return text.find(part) != std::string::npos;
    };
    EXPECT_TRUE(Await([&] {
      return client_->Points().PointCount() == kPoints &&
             holds(Caption(), std::to_string(kPoints) + " Data Points");
    })) << Caption()
        << "\n"
        << RetryText();
    EXPECT_EQ(client_->Points().Track(1).Points().size(), kPointsAUnit);
    EXPECT_EQ(client_->Points().Track(2).Points().size(), kPointsAUnit);
    EXPECT_EQ(RetryText(), "");
  }

  const std::string clientSide_ = Address(1);
  const std::string stationSide_ = Address(2);
  fakes::TemporaryFolder folder_;
  QtClock clock_;
  std::unique_ptr<Process> station_;
  FaultyNetwork network_{clientSide_, stationSide_};
  QtEventLoop loop_;
  fakes::FakeBrowser browser_;
  fakes::FakeQuestionBox box_;
  QuestionQueue questions_{box_};
  fakes::FakeSettings settings_;
  fakes::FakeRegistry registry_;
  fakes::FakeMutex mutex_;
  fakes::FakeSignal signal_;
  fakes::FakeBeeper beeper_;
  fakes::FakeProgramStarter programs_;
  std::string traced_;
  Trace trace_{[this] { return clock_.Seconds(); },
               [this](const std::string& line) { traced_ += line + "\n"; }};
  QtDatagramEndpoint locator_;
  QtStreamEndpoint probe_{kPatience};
  QtStreamEndpoint data_{kPatience};
  formMain window_{new QWidget};  // the widget stands for the browser
  fakes::FakeZonesView zoneWindows_;
  std::unique_ptr<Client> client_;
};

// Where a case says nothing, nothing is wrong to the user's eyes: all points come without a word.
struct Case {
  const char* name;
  Fault fault;
  std::string retry = "";    // how the retry dialog's message begins
  std::string caption = "";  // part of it
  std::string lamp = "";
  std::string message = "";  // a message box
};

void PrintTo(const Case& c, std::ostream* out) { *out << c.name; }

std::vector<Case> Cases() {
  using Locator = Fault::Locator;
  using Port = Fault::Port;
  return {
      {"LateReplies", {.late = milliseconds(400)}},
      {"EveryReplyTwice", {.locator = Locator::kTwice}},
      {"OneByteAtATime", {.pieceSize = 1}},
      {"PiecesThatFitNothing", {.pieceSize = 1371}},
      {"NoLocator", {.locator = Locator::kGone}, "Error 843898/10061-1: "},
      {"NoServerKnown", {.locator = Locator::kEmpty}, "Error 634298-1: Pallomir server had no match"},
      {"ReplyCutShort",
       {.locator = Locator::kOddLength},
       "Error 166308-1: Wrong string length; should be 18, not 17"},
      {"ReplySpoilt", {.locator = Locator::kWrongCode}, "", "Error: HashCode mismatch; should be "},
      {"ReplyWithoutAnAddress", {.locator = Locator::kNoDigits}, "", "", "Looking for the server"},
      {"ProbeRefused", {.probe = Port::kRefusing}, "Error 855712/10061-1: "},
      {"ProbeNeverAnswered", {.probe = Port::kDeaf}, "Error 855711/10060-1: "},
      {"DataRefused", {.data = Port::kRefusing}, "Error 855713/10061-1: \n\nWS_Client_C\n"},
      {"DataNeverAnswered", {.data = Port::kDeaf}, "Error 855713/10060-1: \n\nWS_Client_C\n"},
      {"NoData", {.hasAnswer = false}, "", "0 Data Points", "No data yet"},
      {"ClosedAtOnce", {.cutAt = 0}, "", "0 Data Points", "Closed by the server"},
      {"ClosedInAHeader",
       {.cutAt = 5},
       "",
       "0 Data Points",
       "Closed by the server",
       "Error: Packet size of 5 is less than 8"},
      {"ClosedInAPacket", {.cutAt = 5000}, "", "0 Data Points", "Closed by the server"},
      {"ClosedInTheSecondPacket",
       {.cutAt = kFirstPacketSize + 100},
       "",
       "720 Data Points",
       "Closed by the server"},
      {"ResetInAPacket", {.cutAt = 5000, .isCutHard = true}, "Error 855713/10054-1: \n\nWS_Client_C\n"},
      {"SpoiltCheckCode", {.spoiltAt = 2}, "", "0 Data Points"},
      {"SpoiltRecord", {.spoiltAt = 3000}, "", "0 Data Points"},
      {"SpoiltUnit", {.spoiltAt = 12}, "", "0 Data Points"},
  };
}

class EveryFault : public FaultyNetworkTest, public testing::WithParamInterface<Case> {};

TEST_P(EveryFault, IsToldAndOverWhenTheNetworkIsWell) {
  const Case& c = GetParam();
  network_.Set(c.fault);
  StartClient();
  const bool isHarmless = c.retry.empty() && c.caption.empty() && c.lamp.empty();
  if (!isHarmless) {
    EXPECT_TRUE(Await([&] {
      return RetryText().starts_with(c.retry) && RetryText().empty() == c.retry.empty() &&
             Caption().find(c.caption) != std::string::npos && (c.lamp.empty() || Lamp() == c.lamp);
    })) << "retry: "
        << RetryText() << "\ncaption: " << Caption() << "\nlamp: " << Lamp() << "\n"
        << traced_;
    network_.Set({});
    TryAgain();
  }
  ExpectAllPoints();
  std::string told;
  for (const Question& question : box_.shown) told += question.text;
  EXPECT_EQ(told, c.message);
}

INSTANTIATE_TEST_SUITE_P(Network, EveryFault, testing::ValuesIn(Cases()),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(FaultyNetworkTest, AStationThatDiesAndComesBackIsFoundAgain) {
  StartClient();
  ExpectAllPoints();
  EXPECT_TRUE(Await([&] { return Lamp() == "Connected"; })) << Lamp();
  station_->Signal(SIGKILL);
  EXPECT_TRUE(Await([&] { return Lamp() == "Closed by the server"; })) << Lamp();
  StartStation();
  TryAgain();
  ExpectAllPoints();
}

// What takes its time by itself.
class NetworkPatience : public FaultyNetworkTest {};

TEST_F(NetworkPatience, TheCountdownTriesAgainUntilTheNetworkIsWell) {
  network_.Set({.probe = Fault::Port::kRefusing});
  StartClient();
  ASSERT_TRUE(Await([&] { return RetryText().starts_with("Error 855712/10061-1: "); })) << traced_;
  EXPECT_FALSE(window_.isEnabled() && !QApplication::activeModalWidget());
  network_.Set({});
  ExpectAllPoints();
}

TEST_F(NetworkPatience, ALocatorThatNeverAnswersIsReported) {
  network_.Set({.locator = Fault::Locator::kSilent});
  StartClient();
  ASSERT_TRUE(Await([&] { return RetryText().starts_with("Error 843898/10060-1: "); })) << traced_;
  network_.Set({});
  TryAgain();
  ExpectAllPoints();
}

}  // namespace
}  // namespace pallomir::e2e
