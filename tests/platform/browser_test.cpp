#include <gmock/gmock.h>

#include <QAccessible>
#include <QImage>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QWebEngineView>
#include <map>

#include "fakes/temporary_folder.h"
#include "platform/qt/qt_browser.h"
#include "platform/wait.h"

namespace pallomir {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr char kHost[] = "127.0.9.22";

// The map page as far as the channel goes: keeps what is written into TxtA, and says it when TxtB is written.
constexpr char kPage[] = R"(<html><body><form name="Form1"><input type="hidden" name="TxtA">
<input type="hidden" name="TxtB"></form><iframe id="out"></iframe><script>
const written = [], form = document.forms.Form1;
const say = text => document.getElementById('out').src = '/dummy/' + encodeURIComponent(text);
function watch(name, then) {
  const element = form.elements[name];
  const whole = Object.getOwnPropertyDescriptor(HTMLInputElement.prototype, 'value');
  Object.defineProperty(element, 'value', {set(text) { whole.set.call(this, text); then(text); }});
}
watch('TxtA', text => written.push(text));
watch('TxtB', () => say(written.join('~')));
</script></body></html>)";

// Answers each path with its body, others with 404; "/hang" not at all.
class WebServer : public QTcpServer {
 public:
  WebServer() {
    listen(QHostAddress(kHost));
    connect(this, &QTcpServer::newConnection, this, [this] {
      QTcpSocket* socket = nextPendingConnection();
      connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
        const std::string path = socket->readAll().split(' ').value(1).toStdString();
        asked.push_back(path);
        if (path == "/hang") return;
        const auto found = pages.find(path);
        const std::string body = found == pages.end() ? "none" : found->second;
        socket->write(found == pages.end() ? "HTTP/1.1 404 None\r\n" : "HTTP/1.1 200 OK\r\n");
        socket->write("Content-Type: text/html; charset=utf-8\r\nConnection: close\r\n\r\n");
        socket->write(body.c_str());
        socket->disconnectFromHost();
      });
    });
  }
  std::string Address(const std::string& path) const {
    return std::string(kHost) + ':' + std::to_string(serverPort()) + path;
  }
  std::map<std::string, std::string> pages{{"/map", kPage}};
  std::vector<std::string> asked;
};

class BrowserTest : public testing::Test {
 protected:
  BrowserTest() {
    QImage red(8, 8, QImage::Format_ARGB32);
    red.fill(Qt::red);
    red.save(QString::fromStdString((folder_.Path() / "Red.png").string()));
    fakes::WriteFile(folder_.Path() / "fake.png", "no picture");
    fakes::WriteFile(folder_.Path() / "blue.html", "<title>blue</title>");
    browser_ = std::make_unique<QtBrowser>(TileFiles{{folder_.Path()}, {}}, trace_);
    browser_->beforeNavigate = [this](const std::string& url) {
      EXPECT_FALSE(isInCall_);
      navigations_.push_back(url);
      const std::string prefix = "http://" + server_.Address("/dummy/");
      if (!url.starts_with(prefix)) return false;
      said_.push_back(QUrl::fromPercentEncoding(url.substr(prefix.size()).c_str()).toStdString());
      return true;
    };
    browser_->pageLost = [this](const std::string& reason) { lost_.push_back(reason); };
    auto* view = static_cast<QWebEngineView*>(browser_->Widget());
    QObject::connect(view, &QWebEngineView::loadFinished, view, [this](bool isGood) { loads_ += isGood; });
    view->resize(400, 300);
    view->show();
  }

  void Navigate(const std::string& address) {
    isInCall_ = true;
    browser_->Navigate(address);
    isInCall_ = false;
  }
  void Load(const std::string& path) {
    const int before = loads_;
    Navigate(server_.Address(path));
    ASSERT_TRUE(WaitFor([&] { return loads_ > before; }));
  }

  fakes::TemporaryFolder folder_;
  WebServer server_;
  std::vector<std::string> lines_, navigations_, said_, lost_;
  Trace trace_{[] { return 0.0; }, [this](const std::string& line) { lines_.push_back(line.substr(8)); }};
  std::unique_ptr<QtBrowser> browser_;
  int loads_ = 0;
  bool isInCall_ = false;
};

TEST_F(BrowserTest, WritesReachThePageInOrderAndAsTheyAre) {
  std::vector<std::string> values = {"'\"\\`${1}",
                                     "</script><b>",
                                     "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x9A\x97",
                                     "\xE2\x80\xA8\xE2\x80\xA9",
                                     "%1 %2 %%",
                                     "C:\\Tiles\\002A.png",
                                     ""};
  for (int i = 0; i < 1000; ++i) values.push_back(std::to_string(i));
  Load("/map");
  std::string all;
  for (const std::string& value : values) {
    browser_->WriteField("TxtA", value);
    all += value + "~";
  }
  browser_->WriteField("TxtB", "");
  ASSERT_TRUE(WaitFor([&] { return !said_.empty(); }));
  EXPECT_EQ(said_.front() + "~", all);
  EXPECT_THAT(lines_, IsEmpty());
}

TEST_F(BrowserTest, WritesWithoutTheirFieldAreTraced) {
  browser_->WriteField("TxtR", "0001");
  ASSERT_TRUE(WaitFor([&] { return lines_.size() == 1; }));
  Load("/map");
  browser_->WriteField("TxtR", "0002");
  browser_->WriteField("'];alert(1)//", "x");
  ASSERT_TRUE(WaitFor([&] { return lines_.size() == 3; }));
  EXPECT_THAT(lines_, ElementsAre("no field TxtR on the page", "no field TxtR on the page",
                                  "no field '];alert(1)// on the page"));
}

TEST_F(BrowserTest, CommandsOfThePageAreAllSeenAndNeverSent) {
  server_.pages["/talk"] = R"(<iframe id="f"></iframe><script>
    for (let i = 0; i < 20; i++) document.getElementById('f').src = '/dummy/sub' + i;
    setTimeout(() => location.href = '/dummy/main', 0);
    window.open('/window'); alert('hello'); console.log('noted');
    </script><a id="a" href="/window" target="_blank"></a><script>document.getElementById('a').click()</script>)";
  Load("/talk");
  ASSERT_TRUE(WaitFor([&] { return !said_.empty() && said_.back() == "main"; }));
  ASSERT_EQ(said_.size(), 21u);
  for (int i = 0; i < 20; ++i) EXPECT_EQ(said_[static_cast<std::size_t>(i)], "sub" + std::to_string(i));
  EXPECT_THAT(lines_, AllOf(Contains("page alert: hello"), Contains(HasSubstr("page: noted (talk:"))));
  LetPass(50);
  EXPECT_THAT(server_.asked, ElementsAre("/talk"));
  EXPECT_THAT(lost_, IsEmpty());
}

TEST_F(BrowserTest, LostPagesAreReportedOnce) {
  const struct {
    std::string address;
    const char* reason;
  } cases[] = {{server_.Address("/nothing"), "HTTP status 404"},
               {"127.0.9.23:81/", "CONNECTION_REFUSED"},
               {"/no/such/file.html", "FILE_NOT_FOUND"},
               {"http://[bad", "no address"}};
  for (const auto& row : cases) {
    lost_.clear();
    Navigate(row.address);
    EXPECT_THAT(lost_, IsEmpty());
    ASSERT_TRUE(WaitFor([&] { return !lost_.empty(); })) << row.address;
    EXPECT_THAT(lost_, ElementsAre(HasSubstr(row.reason)));
  }
}

TEST_F(BrowserTest, ReplacedCancelledAndStoppedLoadsAreNotLost) {
  Navigate(server_.Address("/hang"));
  ASSERT_TRUE(WaitFor([&] { return server_.asked.size() == 1; }));
  Load("/map");
  Navigate(server_.Address("/dummy/x"));
  ASSERT_TRUE(WaitFor([&] { return !said_.empty(); }));
  Navigate(server_.Address("/hang"));
  ASSERT_TRUE(WaitFor([&] { return server_.asked.size() == 3; }));
  browser_->Stop();
  LetPass(100);
  EXPECT_THAT(lost_, IsEmpty());
  // And a failure after all this is one.
  Navigate(server_.Address("/nothing"));
  EXPECT_TRUE(WaitFor([&] { return lost_.size() == 1; }));
}

TEST_F(BrowserTest, PlaceholderIsLoadedToItsEndAndTheMapPageComesAfterIt) {
  const std::string placeholder = (folder_.Path() / "blue.html").string();
  Navigate("about:blank");
  Navigate(placeholder);
  Navigate(server_.Address("/hang"));
  ASSERT_TRUE(WaitFor([&] { return server_.asked.size() == 1; }));
  EXPECT_THAT(navigations_, ElementsAre("file://" + placeholder, "http://" + server_.Address("/hang")));
  EXPECT_EQ(static_cast<QWebEngineView*>(browser_->Widget())->page()->title(), "blue");
  Navigate("about:blank");
  Navigate("/no/such/file.html");
  Load("/map");
  EXPECT_THAT(lost_, IsEmpty()) << "a missing one keeps nothing back";
}

TEST_F(BrowserTest, DeadProcessIsALostPageThatCanBeLoadedAgain) {
  Load("/map");
  Navigate("chrome://kill");
  ASSERT_TRUE(WaitFor([&] { return !lost_.empty(); }));
  EXPECT_THAT(lost_, ElementsAre(HasSubstr("process")));
  browser_->WriteField("TxtA", "for the dead");
  EXPECT_THAT(lines_, Contains("no field TxtA on the page"));
  Load("/map");
  browser_->WriteField("TxtB", "");
  ASSERT_TRUE(WaitFor([&] { return !said_.empty(); }));
  EXPECT_EQ(said_.front(), "");
}

TEST_F(BrowserTest, PageOverHttpShowsTilesAndNothingElse) {
  server_.pages["/tiles"] = R"(<script>
    const names = ['tile:///Red.png', 'tile:///Red.png?2', 'tile:Red.png', 'tile:///fake.png', 'tile:///missing.png',
      'tile:///blue.html', 'tile://host/Red.png', 'tile:///..%2FRed.png', 'tile:///%2Fetc%2Fhostname',
      'file:///etc/hostname'];
    const shown = [];
    const load = (name) => new Promise((done) => {
      const image = new Image;
      image.onload = () => done(shown.push(name));
      image.onerror = done;
      image.src = name;
    });
    Promise.all(names.map(load)).then(() => location.href = '/dummy/' + encodeURIComponent(shown.sort().join(' ')));
    fetch('tile:///Red.png').then(() => console.log('fetched'), () => console.log('refused'));
    </script>)";
  Navigate(server_.Address("/tiles"));
  ASSERT_TRUE(WaitFor([&] { return !said_.empty(); }));
  EXPECT_EQ(said_.front(), "tile:///Red.png tile:///Red.png?2 tile:Red.png");
  EXPECT_TRUE(WaitFor([&] { return testing::Value(lines_, Contains(HasSubstr("refused"))); }));
}

TEST_F(BrowserTest, ControlAndWheelDoNotZoom) {
  Load("/map");
  auto* view = static_cast<QWebEngineView*>(browser_->Widget());
  QWheelEvent wheel({50, 50}, view->mapToGlobal(QPointF(50, 50)), {}, {0, 120}, Qt::NoButton,
                    Qt::ControlModifier, Qt::NoScrollPhase, false);
  for (auto* child : view->findChildren<QWidget*>()) QCoreApplication::sendEvent(child, &wheel);
  QTest::keyClick(view, Qt::Key_Plus, Qt::ControlModifier);
  LetPass(100);
  EXPECT_EQ(view->zoomFactor(), 1.0);
}

/// The names of what assistive programs find in `from`, however deep.
void CollectNames(QAccessibleInterface* from, QStringList& names) {
  for (int i = 0; from && i < from->childCount(); ++i) {
    QAccessibleInterface* child = from->child(i);
    if (!child) continue;
    names += child->text(QAccessible::Name);
    CollectNames(child, names);
  }
}

TEST_F(BrowserTest, AssistiveProgramsReadThePage) {
  QAccessible::setActive(true);
  server_.pages["/named"] = "<title>A map</title><body><button aria-label='Zoom in'>+</button></body>";
  Load("/named");
  EXPECT_TRUE(WaitFor([&] {
    QStringList names;
    CollectNames(QAccessible::queryAccessibleInterface(browser_->Widget()), names);
    return names.contains("A map") && names.contains("Zoom in");
  }));
}

TEST_F(BrowserTest, TabReachesThePageWhereItStandsInTheWindowAndAClickDoesNot) {
  QWidget window;
  QWidget before(&window);
  browser_->Widget()->setParent(&window);
  QWidget after(&window);
  for (QWidget* each : {&before, &after}) each->setFocusPolicy(Qt::TabFocus);
  QWidget::setTabOrder(&before, browser_->Widget());
  QWidget::setTabOrder(browser_->Widget(), &after);
  window.show();
  Load("/map");
  std::vector<QWidget*> stops;
  QWidget* each = &before;
  do {
    if ((each->focusPolicy() & Qt::TabFocus) && !each->focusProxy()) stops.push_back(each);
    EXPECT_FALSE(each->focusPolicy() & Qt::ClickFocus);
    each = each->nextInFocusChain();
  } while (each != &before);
  ASSERT_EQ(stops.size(), 3u);
  EXPECT_TRUE(browser_->Widget()->isAncestorOf(stops[1]));
  EXPECT_EQ(stops[2], &after);
  browser_->Widget()->setParent(nullptr);
}

TEST(TileScheme, FindsPlainPngNamesOnly) {
  const fakes::TemporaryFolder root;
  const auto tiles = root.Path() / "Tiles";
  std::filesystem::create_directories(tiles / "sub.png");
  const std::string longest = std::string(60, 'A') + ".png";
  const std::vector<std::string> served{"002A0E.png", longest, "Red.png"};
  const std::vector<std::string> others{'A' + longest,
                                        std::string("Red.png\0", 8),
                                        std::string("a\0Red.png", 9),
                                        root.Path() / "Red.png",
                                        "secret.png",
                                        "../secret.png",
                                        "..",
                                        "",
                                        ".png",
                                        "absent.png",
                                        "a.txt",
                                        ".hidden.png",
                                        "sub.png",
                                        "link.png",
                                        "002A0E.PNG",
                                        "sub/../002A0E.png",
                                        "..\\Red.png"};
  for (const std::string& name :
       {served[0], longest, 'A' + longest, std::string("a.txt"), std::string(".hidden.png")})
    fakes::WriteFile(tiles / name, "x");
  for (const char* name : {"Red.png", "secret.png"}) fakes::WriteFile(root.Path() / name, "x");
  std::filesystem::create_symlink(root.Path() / "secret.png", tiles / "link.png");
  const TileFiles files{{tiles}, {root.Path() / "Red.png", root.Path() / "absent.png"}};
  for (const std::string& name : served) EXPECT_TRUE(FindServedFile(files, name)) << name;
  for (const std::string& name : others) EXPECT_FALSE(FindServedFile(files, name)) << name;
}

TEST(Address, GetsItsScheme) {
  const std::pair<const char*, const char*> cases[] = {
      {"about:blank", "about:blank"},
      {"127.0.0.1:2480/fullscreen/index.php?X=1&Y=2", "http://127.0.0.1:2480/fullscreen/index.php?X=1&Y=2"},
      {"localhost:2480/x", "http://localhost:2480/x"},
      {"https://a.example/", "https://a.example/"},
      {"/opt/a b%20c#d/blank.html", "file:///opt/a b%2520c%23d/blank.html"}};
  for (const auto& [text, url] : cases) EXPECT_EQ(AddressOf(text).toString().toStdString(), url);
}

}  // namespace
}  // namespace pallomir
