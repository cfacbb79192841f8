#include <gmock/gmock.h>
#include <signal.h>

#include <QApplication>
#include <QDeadlineTimer>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QWebEngineView>
#include <asio/io_context.hpp>
#include <thread>

#include "e2e/program_folder.h"
#include "platform/wait.h"
#include "program.h"
#include "station/station.h"
#include "zones/zone_file.h"
#include "zones/zone_testing.h"

// Zones in the whole program: the station's page in the real window, drawn on by the mouse.

namespace pallomir::e2e {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr char kAddress[] = "127.0.12.1";  // this test's own

class ZonePageTest : public testing::Test {
 protected:
  ZonePageTest() {
    for (const auto& [name, value] : fakes::ClientEnvironment(folder_.Path(), "offscreen"))
      qputenv(name.c_str(), value.c_str());
    fs::create_directories(folder_.Data() / "0013A20040B1");  // or a dialog says that no server knows it
    options_.address = kAddress;
    options_.webRoot = WEB_FOLDER;
    options_.data = folder_.Data();
    options_.isDemoOn = false;
  }

  /// The program on this zone file, until `body` is through.
  void Run(const std::string& zones, const std::function<void()>& body) {
    fakes::WriteFile(File(), zones);
    asio::io_context context;
    station::Station station(context, options_, [](const std::string&) {});
    ASSERT_EQ(station.Open(), "");
    std::thread serving([&] { context.run(); });
    {
      Program program(
          {folder_.App(), folder_.Path() / "share", folder_.Path() / "profile"},
          [this](const std::string& line) { readies_ += line.find("map page ready") != line.npos; });
      program_ = &program;
      QTimer::singleShot(0, [&] {
        EXPECT_TRUE(WaitFor([this] { return readies_ > 0; }, 60'000));
        if (readies_ > 0) body();
        View()->window()->close();
      });
      EXPECT_EQ(program.Run(), 0);
    }
    context.stop();
    serving.join();
  }

  fs::path File() const { return folder_.Path() / "share/pallomir/ZoneMenus.txt"; }
  ZoneTree OnDisk() const { return ReadZones(fakes::ReadFile(File())).tree; }
  QWebEngineView* View() { return dynamic_cast<QWebEngineView*>(program_->TheBrowser()->Widget()); }

  QVariant Evaluate(const QString& script) {
    bool isThere = false;
    QVariant value;
    View()->page()->runJavaScript(script, [&](const QVariant& result) {
      value = result;
      isThere = true;
    });
    EXPECT_TRUE(WaitFor([&] { return isThere; }));
    return value;
  }
  bool Becomes(const QString& script, const QString& text) {
    const QDeadlineTimer patience(20'000);
    while (!patience.hasExpired()) {
      if (Evaluate(script).toString().contains(text)) return true;
      LetPass(10);
    }
    return false;
  }
  bool PageShows(const QString& text) {
    if (Becomes("document.body.innerText", text)) return true;
    ADD_FAILURE() << "the page shows no " << text.toStdString();
    return false;
  }

  void Choose(Command command, int index = 0) {
    MenuItem item;
    item.command = command;
    item.index = index;
    program_->TheClient()->MenuChosen(item);
  }
  MenuItem& Menu(Command command) { return program_->TheClient()->Menus().At(command); }
  template <class Widget>
  Widget* Await(const char* name) {
    Widget* widget = nullptr;
    EXPECT_TRUE(WaitFor([&] {
      for (Widget* each : View()->window()->findChildren<Widget*>(name))
        if (each->isVisible()) widget = each;
      return widget != nullptr;
    })) << name;
    return widget;
  }
  void CloseMessage(const char* text) {
    QMessageBox* box = nullptr;
    EXPECT_TRUE(WaitFor([&] {
      for (QWidget* window : QApplication::topLevelWidgets()) {
        auto* shown = qobject_cast<QMessageBox*>(window);
        if (shown && shown->isVisible()) box = shown;
      }
      return box != nullptr;
    })) << text;
    if (!box) return;
    EXPECT_THAT(box->text().toStdString(), HasSubstr(text));
    box->button(QMessageBox::Ok)->click();
  }

  /// Where the page has a place, in the window.
  QPoint InWindow(const QPoint& at) { return View()->mapTo(View()->window(), at); }
  QWindow* Window() { return View()->window()->windowHandle(); }
  void MoveTo(const QPoint& at) {
    QTest::mouseMove(Window(), InWindow(at));
    const QString place = QString::number(at.x()) + ',' + QString::number(at.y());
    EXPECT_TRUE(Becomes("window.pointer", place)) << Evaluate("window.pointer").toString().toStdString();
  }
  void Click(const QPoint& at, Qt::MouseButton button = Qt::LeftButton) {
    MoveTo(at);
    QTest::mousePress(Window(), button, {}, InWindow(at));
    QTest::mouseRelease(Window(), button, {}, InWindow(at));
  }
  void Drag(const QPoint& from, const QPoint& to) {
    MoveTo(from);
    QTest::mousePress(Window(), Qt::LeftButton, {}, InWindow(from));
    for (int step = 1; step <= 4; ++step) MoveTo(from + (to - from) * step / 4);
    QTest::mouseRelease(Window(), Qt::LeftButton, {}, InWindow(to));
  }

  /// What a right-click there offers behind the fixed entries of the Zones menu; closes the menu.
  std::vector<std::string> OfferedAt(const QPoint& at) {
    Click(at, Qt::RightButton);
    EXPECT_TRUE(WaitFor([] { return QApplication::activePopupWidget() != nullptr; }));
    std::vector<std::string> offered;
    const auto& entries = Menu(Command::kZoneMenu).children;
    for (auto entry = entries.rbegin(); entry != entries.rend() && entry->identifier != 0; ++entry)
      offered.insert(offered.begin(), entry->caption);
    if (QWidget* popup = QApplication::activePopupWidget()) popup->close();
    return offered;
  }

  const ProgramFolder folder_{kAddress, {{"Mobile Units", "X0013A20040B1Van~"}}};
  station::Options options_;
  int readies_ = 0;
  Program* program_ = nullptr;
};

TEST_F(ZonePageTest, AZoneIsDrawnByMouseNamedAndFoundWhereItWasDrawn) {
  Run("\"Alerted\"\r\n", [this] {
    Choose(Command::kAddZone);
    auto* name = Await<QLineEdit>("txtDescription");
    name->setText("");
    QTest::keyClicks(name, "R&D \"x\", <b>");
    Await<QPushButton>("cmdCmd1")->click();
    ASSERT_TRUE(PageShows("New zone: 0 corners"));
    Evaluate("addEventListener('mousemove', (event) => { pointer = event.clientX + ',' + event.clientY; })");
    const QPoint corners[] = {{350, 250}, {570, 250}, {650, 360}, {570, 480}, {350, 480}};
    for (int i = 0; i < 5; ++i) {
      Click(corners[i]);
      ASSERT_TRUE(PageShows("New zone: " + QString::number(i + 1) + " corner"));
    }
    EXPECT_TRUE(WaitFor([this] { return Menu(Command::kFinishZone).visible; }));
    Click(corners[0]);  // closes the outline
    ASSERT_TRUE(PageShows("Drag corners to move them"));
    Drag(corners[4], corners[3]);
    ASSERT_TRUE(PageShows("New zone: 4 corners"));
    Evaluate(
        "[...document.querySelectorAll('button')].find((b) => b.textContent.startsWith('Undo')).click()");
    ASSERT_TRUE(PageShows("New zone: 5 corners")) << "it is back, and the outline stays closed";
    Drag(corners[2], corners[1]);
    ASSERT_TRUE(PageShows("New zone: 4 corners"));
    Choose(Command::kFinishZone);
    EXPECT_TRUE(WaitFor([this] { return !Menu(Command::kCancelZone).visible; }));

    const ZoneTree tree = OnDisk();
    ASSERT_EQ(tree.Count(), 1u);
    EXPECT_EQ(tree.At(0).options.Description, "R&D 'x', <b>");
    ASSERT_EQ(tree.At(0).vertexCount, 4u);
    const ZoneBounds& bounds = tree.At(0).bounds;
    EXPECT_NEAR((bounds.maxLng - bounds.minLng) / (tree.VerticesOf(0)[1].lng - tree.VerticesOf(0)[0].lng), 1,
                0.02)
        << "the corner that stood out is gone";
    EXPECT_EQ(Menu(Command::kAddZone).caption, "Add Alerted Zone 2");
    EXPECT_TRUE(PageShows("1 R&D 'x', <b>"));
    const auto offer = testing::ElementsAre("-", "&Delete R&&D 'x', <b>", "&Edit R&&D 'x', <b>",
                                            "&Zoom To R&&D 'x', <b>", "&Been To R&&D 'x', <b> ?");
    EXPECT_THAT(OfferedAt({355, 260}), offer);
    EXPECT_THAT(OfferedAt({560, 470}), offer);
    for (const QPoint& outside : {QPoint(340, 260), {600, 360}, {560, 490}})
      EXPECT_THAT(OfferedAt(outside), testing::IsEmpty()) << outside.x();
  });
}

TEST_F(ZonePageTest, EveryZoneReachesThePageAndAPageThatDiesChangesNone) {
  ZoneTreeBuilder builder(ZoneKind::kNonAlert);
  for (int i = 0; i < 1025; ++i) builder.Append(1, {"", "Z"}, Square(i / 30, i % 30, 0.5));
  const std::string before = WriteZones(builder.Build());
  Run(before, [&] {
    Choose(Command::kEditZone, 1024);
    Await<QPushButton>("cmdCmd1")->click();
    ASSERT_TRUE(PageShows("Zone: 4 corners"));
    Choose(Command::kFinishZone);
    EXPECT_TRUE(WaitFor([this] { return !Menu(Command::kCancelZone).visible; }));
    EXPECT_TRUE(fakes::ReadFile(File()) == before) << "unmoved, it comes back as it was";

    Choose(Command::kEditZone, 0);
    Await<QPushButton>("cmdCmd1")->click();
    ASSERT_TRUE(PageShows("Zone: 4 corners"));
    ::kill(static_cast<pid_t>(View()->page()->renderProcessPid()), SIGKILL);
    CloseMessage("The map was lost while a zone was drawn");
    EXPECT_FALSE(Menu(Command::kCancelZone).visible);
    EXPECT_TRUE(fakes::ReadFile(File()) == before);
    EXPECT_TRUE(WaitFor([this] { return readies_ == 2; }, 60'000)) << "the map comes back";

    Choose(Command::kDeleteZone, 0);
    CloseMessage("Are you sure");
    ZoneTreeBuilder rest(ZoneKind::kNonAlert);
    for (int i = 1; i < 1025; ++i) rest.Append(1, {"", "Z"}, Square(i / 30, i % 30, 0.5));
    const std::string after = WriteZones(rest.Build());
    EXPECT_TRUE(WaitFor([&] { return fakes::ReadFile(File()) == after; })) << "the first one, not the last";
    Evaluate("location.href = '/dummy/zF1~2~3~4~5~6~'");
    LetPass(100);
    EXPECT_TRUE(fakes::ReadFile(File()) == after) << "a shape that nobody asked for";
  });
}

}  // namespace
}  // namespace pallomir::e2e
