#include <gtest/gtest.h>

#include <QDialog>
#include <QLabel>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <limits>

#include "base/packed_time.h"
#include "fakes/client_harness.h"
#include "fakes/process.h"
#include "fakes/temporary_folder.h"
#include "platform/qt/qt_clock.h"
#include "platform/qt/qt_endpoints.h"
#include "platform/qt/qt_event_loop.h"
#include "shell/client.h"
#include "station/store/data_writer.h"
#include "station/store/import_lock.h"
#include "window/formMain.h"

// The real station and the real window with its real sockets, and a network between them that does what
// networks do. Only the map page is left out: its road is another one.

namespace pallomir::e2e {
namespace {

namespace fs = std::filesystem;
using fakes::Process;

constexpr char kUnits[][kUnitIdSize + 1] = {"0013A20040B1", "0013A20040B2"};
constexpr std::size_t kPointsAUnit = 1000;  // two packets each
constexpr std::size_t kPoints = 2 * kPointsAUnit;
constexpr std::size_t kFirstPacketSize = kPacketHeaderSize + kUnitIdSize + kRecordsPerPacket * kRecordSize;

/// What is wrong with the way of the data.
struct Fault {
  static constexpr qsizetype kNever = std::numeric_limits<qsizetype>::max();
  bool isRefused = false;
  qsizetype pieceSize = 1 << 16;
  qsizetype cutAt = kNever;     ///< closed behind so many bytes
  qsizetype spoiltAt = kNever;  ///< this byte comes wrong
};

/// A port of the client's side that passes everything on to the same one of the station's side and back, and
/// does to what comes back what the fault says.
class Relay {
 public:
  Relay(const std::string& clientSide, const std::string& stationSide, quint16 port)
      : here_(QString::fromStdString(clientSide)), there_(QString::fromStdString(stationSide)), port_(port) {
    QObject::connect(&server_, &QTcpServer::newConnection, [this] { Join(server_.nextPendingConnection()); });
    Set({});
  }

  /// For connections made from here on.
  void Set(const Fault& fault) {
    fault_ = fault;
    server_.close();
    if (!fault.isRefused) server_.listen(here_, port_);
  }

 private:
  void Join(QTcpSocket* near) {
    auto* far = new QTcpSocket(near);
    QObject::connect(near, &QTcpSocket::readyRead, far, [near, far] { far->write(near->readAll()); });
    QObject::connect(
        far, &QTcpSocket::readyRead, near,
        [near, far, fault = fault_, passed = qsizetype{0}]() mutable { PassOn(*far, *near, fault, passed); });
    QObject::connect(far, &QTcpSocket::connected, near, [near, far] { far->write(near->readAll()); });
    QObject::connect(far, &QTcpSocket::disconnected, near, &QTcpSocket::disconnectFromHost);
    far->connectToHost(there_, port_);
  }

  static void PassOn(QTcpSocket& far, QTcpSocket& near, const Fault& fault, qsizetype& passed) {
    QByteArray bytes = far.readAll().left(fault.cutAt - passed);
    if (fault.spoiltAt >= passed && fault.spoiltAt < passed + bytes.size())
      bytes[fault.spoiltAt - passed] = static_cast<char>(bytes[fault.spoiltAt - passed] ^ 1);
    for (qsizetype at = 0; at < bytes.size(); at += fault.pieceSize) {
      near.write(bytes.mid(at, fault.pieceSize));
      near.flush();
    }
    passed += bytes.size();
    if (passed == fault.cutAt) near.disconnectFromHost();
  }

  QHostAddress here_;
  QHostAddress there_;
  quint16 port_;
  Fault fault_;
  QTcpServer server_;
};

class FaultyNetworkTest : public testing::Test {
 protected:
  void StartStation() {
    station_ = std::make_unique<Process>(std::vector<std::string>{PALLOMIR_STATION, "--address", stationSide_,
                                                                  "--advertised-address", clientSide_,
                                                                  "--data", tracks_.Path(), "--demo", "off"});
    ASSERT_TRUE(station_->Await("pallomir-station ready")) << station_->Output();
  }

  void SetUp() override {
    const Millis last = clock_.NowUtc() / kSecond * kSecond - kMinute;
    const station::ImportLock lock(tracks_.Path(), {});
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
    StartStation();
  }

  void StartClient() {
    fakes_.UseUnits(std::string("X") + kUnits[0] + "A~X" + kUnits[1] + "B~");
    for (const auto& [key, value] : {std::pair("LoadOnStartup", "Load Last 24 Hrs Data"),
                                     {"WindowState", "0"},
                                     {"WindowPos_W", "900"},
                                     {"WindowPos_H", "600"}})
      fakes_.settings.values[key] = value;
    const Views views = ViewsOf(window_, fakes_.zonesView, fakes_.alertView, fakes_.journalView,
                                fakes_.pointTableView, fakes_.visitsView, fakes_.liveView);
    const Ports ports = fakes_.PortsFor(views, window_.System());
    client_ = std::make_unique<Client>(Ports{.views = views,
                                             .network = {locator_, probe_, data_},
                                             .desktop = ports.desktop,
                                             .storage = ports.storage,
                                             .instance = ports.instance,
                                             .loop = loop_,
                                             .clock = clock_,
                                             .trace = fakes_.trace,
                                             .deployment = {stationSide_, clientSide_ + ":2480"}});
    window_.Attach(client_->RoomsOfWindow());
    client_->Load();
    // The page is there and knows its zoom.
    for (const char* command : {"S1", "M40.0,-75.0", "Z12"})
      fakes_.browser.beforeNavigate("http://" + clientSide_ + ":2480/dummy/" + command);
  }

  void TearDown() override {
    if (client_) window_.close();
  }

  std::string Caption() { return window_.findChild<QLabel*>("lblCaption")->text().toStdString(); }
  std::string Lamp() { return window_.findChild<QWidget*>("picLamp")->toolTip().toStdString(); }

  std::string RetryText() {
    auto* dialog = window_.findChild<QDialog*>("FormRetryAfterError");
    return dialog && dialog->isVisible() ? dialog->findChild<QLabel*>("lblMessage")->text().toStdString()
                                         : "";
  }

  static bool Holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
  }
  static bool Await(const std::function<bool()>& what) { return QTest::qWaitFor(what, 20'000); }

  void ExpectAllPoints() {
    EXPECT_TRUE(Await([&] {
      return client_->Points().PointCount() == kPoints &&
             Holds(Caption(), std::to_string(kPoints) + " Data Points");
    })) << Caption()
        << "\n"
        << RetryText();
    EXPECT_EQ(RetryText(), "");
  }

  const std::string clientSide_ = "127.0.61.1";  // addresses of this test's own
  const std::string stationSide_ = "127.0.61.2";
  fakes::TemporaryFolder tracks_;
  fakes::ClientHarness fakes_;  // of all but network, clock and loop
  QtClock clock_;
  std::unique_ptr<Process> station_;
  Relay probes_{clientSide_, stationSide_, 18799};
  Relay way_{clientSide_, stationSide_, 18800};
  QtEventLoop loop_;
  QtDatagramEndpoint locator_;
  QtStreamEndpoint probe_;
  QtStreamEndpoint data_;
  formMain window_{new QWidget};  // the widget stands for the browser
  std::unique_ptr<Client> client_;
};

struct Case {
  const char* name;
  Fault fault;
  std::string caption;       // part of it
  std::string retry = "";    // part of the retry dialog's message
  std::string message = "";  // a message box
};

void PrintTo(const Case& c, std::ostream* out) { *out << c.name; }

class EveryFault : public FaultyNetworkTest, public testing::WithParamInterface<Case> {};

TEST_P(EveryFault, IsToldAndOverWhenTheNetworkIsWell) {
  const Case& c = GetParam();
  way_.Set(c.fault);
  StartClient();
  EXPECT_TRUE(Await([&] {
    return Holds(RetryText(), c.retry) && RetryText().empty() == c.retry.empty() &&
           Holds(Caption(), c.caption);
  })) << "retry: "
      << RetryText() << "\ncaption: " << Caption() << "\n"
      << testing::PrintToString(fakes_.traced);
  way_.Set({});
  client_->Pickers().ReloadClicked();
  ExpectAllPoints();
  std::string told;
  for (const Question& question : fakes_.box.shown) told += question.text;
  EXPECT_EQ(told, c.message);
}

INSTANTIATE_TEST_SUITE_P(
    Network, EveryFault,
    testing::Values(
        Case{"PiecesThatFitNothing", {.pieceSize = 1371}, "2000 Data Points"},
        Case{"Refused", {.isRefused = true}, "", "Error 855713/10061-1: \n\nWS_Client_C\n"},
        Case{"ClosedInAHeader", {.cutAt = 5}, "0 Data Points", "", "Error: Packet size of 5 is less than 8"},
        Case{"ClosedInTheSecondPacket", {.cutAt = kFirstPacketSize + 100}, "720 Data Points"},
        Case{"SpoiltRecord", {.spoiltAt = 3000}, "0 Data Points"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(FaultyNetworkTest, AStationThatDiesAndComesBackIsFoundAgain) {
  StartClient();
  ExpectAllPoints();
  EXPECT_TRUE(Await([&] { return Holds(Lamp(), "Connected"); })) << Lamp();
  station_->Signal(SIGKILL);
  EXPECT_TRUE(Await([&] { return Holds(Lamp(), "closed the connection"); })) << Lamp();
  StartStation();
  client_->Pickers().ReloadClicked();
  ExpectAllPoints();
}

}  // namespace
}  // namespace pallomir::e2e
