#include "platform/qt/bus_notifier.h"

#include <gmock/gmock.h>

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QProcess>

#include "fakes/temporary_folder.h"
#include "platform/wait.h"

namespace pallomir {
namespace {

using testing::ElementsAre;

constexpr char kService[] = "org.freedesktop.Notifications";
constexpr char kPath[] = "/org/freedesktop/Notifications";

/// A desktop's service that shows nothing.
class Service : public QDBusVirtualObject {
 public:
  explicit Service(const QString& address) : bus_(QDBusConnection::connectToBus(address, "service")) {
    bus_.registerVirtualObject(kPath, this);
    EXPECT_TRUE(bus_.registerService(kService));
  }
  ~Service() override { QDBusConnection::disconnectFromBus("service"); }

  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
    if (message.member() == "GetCapabilities") {
      bus.send(message.createReply(QStringList{"actions", markup ? "body-markup" : "body"}));
    } else {
      shown.push_back(
          (message.arguments()[3].toString() + '|' + message.arguments()[4].toString()).toStdString());
      bus.send(message.createReply(uint(shown.size())));
    }
    return true;
  }
  void Click(uint id) {
    QDBusMessage signal = QDBusMessage::createSignal(kPath, kService, "ActionInvoked");
    bus_.send(signal << id << QString("default"));
  }

  bool markup = false;
  std::vector<std::string> shown;

 private:
  QDBusConnection bus_;
};

class BusNotifierTest : public testing::Test {
 protected:
  void SetUp() override {
    daemon_.start("dbus-daemon", {"--session", "--nofork", "--nopidfile", "--print-address=1",
                                  "--address=unix:path=" + Folder() + "/bus"});
    if (!daemon_.waitForStarted()) GTEST_SKIP() << "no dbus-daemon here";
    ASSERT_TRUE(daemon_.waitForReadyRead());
    address_ = QString::fromUtf8(daemon_.readAllStandardOutput()).trimmed();
  }
  void TearDown() override {
    daemon_.kill();
    daemon_.waitForFinished();
  }
  QString Folder() const { return QString::fromStdString(folder_.Path().string()); }

  fakes::TemporaryFolder folder_;
  QProcess daemon_;
  QString address_;
};

TEST_F(BusNotifierTest, AClickComesBackOnce) {
  Service service(address_);
  BusNotifier notifier(address_);
  std::vector<std::string> clicked;
  notifier.Notify("Van A", "Entered <R&D>", [&] { clicked.push_back("A"); });
  notifier.Notify("Van B", "Left Yard", [&] { clicked.push_back("B"); });
  ASSERT_TRUE(WaitFor([&] { return service.shown.size() == 2; }));
  EXPECT_THAT(service.shown, ElementsAre("Van A|Entered <R&D>", "Van B|Left Yard"));
  service.Click(2);
  ASSERT_TRUE(WaitFor([&] { return !clicked.empty(); }));
  service.Click(2);
  service.Click(99);
  service.Click(1);
  ASSERT_TRUE(WaitFor([&] { return clicked.size() == 2; }));
  EXPECT_THAT(clicked, ElementsAre("B", "A"));
}

TEST_F(BusNotifierTest, AServiceThatReadsMarkupGetsNone) {
  Service service(address_);
  service.markup = true;
  BusNotifier notifier(address_);
  notifier.Notify("R&D", "Entered <R&D>", [] {});
  ASSERT_TRUE(WaitFor([&] { return !service.shown.empty(); }));
  EXPECT_THAT(service.shown, ElementsAre("R&D|Entered &lt;R&amp;D&gt;"));
}

TEST_F(BusNotifierTest, WithoutServiceOrBusNothingHappens) {
  BusNotifier lonely(address_), nowhere("unix:path=" + Folder() + "/none");
  lonely.Notify("Van A", "Entered Yard", [] { FAIL(); });
  nowhere.Notify("Van A", "Entered Yard", [] { FAIL(); });
  LetPass(50);
  Service service(address_);
  lonely.Notify("Van A", "Left Yard", [] {});
  EXPECT_TRUE(WaitFor([&] { return service.shown.size() == 1; })) << "a service that comes later is found";
}

}  // namespace
}  // namespace pallomir
