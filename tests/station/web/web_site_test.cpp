#include "station/web/web_site.h"

#include <array>
#include <asio/ip/tcp.hpp>
#include <asio/write.hpp>
#include <chrono>
#include <memory>
#include <set>

#include "station/station_testing.h"
#include "station/web/web_connection.h"
#include "station/web/web_files.h"

namespace pallomir::station {
namespace {

namespace fs = std::filesystem;

class WebSiteOnDisk : public testing::Test {
 protected:
  WebSiteOnDisk() {
    folder_.Write("web/fullscreen/index.html", "<p>map</p>");
    folder_.Write("web/fullscreen/map.js", "let x;");
    folder_.Write("web/a b.css", "");
    folder_.Write("web/.hidden", "no");
    folder_.Write("secret.txt", "no");
    fs::create_symlink(folder_.Path() / "secret.txt", root_ / "link.txt");
    folder_.Write("web/fullscreen/faq.html", "answers");
    fs::create_symlink("fullscreen/map.js", root_ / "inside.js");
  }

  // The answer to a GET (or another method) of `target`.
  std::string Ask(const std::string& target, const std::string& headers = "",
                  const std::string& method = "GET") {
    if (port_ == 0) port_ = site_.Start("127.0.72.3", 0);
    TestClient client({asio::ip::make_address("127.0.72.3"), static_cast<std::uint16_t>(port_)});
    client.Send(method + " " + target + " HTTP/1.1\r\nHost: test\r\nConnection: close\r\n" + headers +
                "\r\n");
    return client.ReceiveAll();
  }

  TemporaryFolder folder_;
  const fs::path root_ = folder_.Path() / "web";
  WebSite site_{root_};
  int port_ = 0;
};

TEST_F(WebSiteOnDisk, FindsFilesAndNothingElse) {
  const struct {
    std::string_view path;
    const char* file;
  } cases[] = {
      {"/fullscreen/index.php", "fullscreen/index.html"},
      {"/faq", "fullscreen/faq.html"},
      {"/fullscreen/index.html", "fullscreen/index.html"},
      {"/fullscreen/map.js", "fullscreen/map.js"},
      {"/a b.css", "a b.css"},
      {"/inside.js", "fullscreen/map.js"},
      {"/", nullptr},
      {"", nullptr},
      {"/fullscreen", nullptr},
      {"/fullscreen/", nullptr},
      {"/fullscreen/none.js", nullptr},
      {"/dummy/Z", nullptr},
      {"/.hidden", nullptr},
      {"/link.txt", nullptr},
      {"/../secret.txt", nullptr},
      {"/fullscreen/../../secret.txt", nullptr},
      {"/fullscreen/../fullscreen/map.js", nullptr},
      {"//fullscreen/map.js", nullptr},
      {"/..\\secret.txt", nullptr},
      {std::string_view("/fullscreen/map.js\0.png", 22), nullptr},
      {"fullscreen/map.js", nullptr},
  };
  for (const auto& c : cases) {
    const auto found = FindWebFile(root_, c.path);
    EXPECT_EQ(found.has_value(), c.file != nullptr) << c.path;
    EXPECT_TRUE(!found || c.file == nullptr || *found == fs::canonical(root_ / c.file)) << c.path;
  }
  EXPECT_FALSE(FindWebFile(folder_.Path() / "missing", "/a.css"));
}

TEST_F(WebSiteOnDisk, AnswersOverHttp) {
  const std::string page = Ask("/fullscreen/index.php?X=1&Y=2");
  EXPECT_TRUE(page.starts_with("HTTP/1.1 200")) << page;
  EXPECT_NE(page.find("Content-Type: text/html"), std::string::npos);
  EXPECT_NE(page.find("Cache-Control: no-cache"), std::string::npos);
  EXPECT_TRUE(page.ends_with("\r\n\r\n<p>map</p>"));
  EXPECT_NE(Ask("/fullscreen/map.js").find("Content-Type: text/javascript"), std::string::npos);
  EXPECT_NE(Ask("/a%20b.css").find("Content-Type: text/css"), std::string::npos);
  for (const char* target :
       {"/", "/dummy/T0", "/%2e%2e/secret.txt", "/fullscreen/%2e%2e%2f%2e%2e%2fsecret.txt"})
    EXPECT_TRUE(Ask(target).starts_with("HTTP/1.1 404")) << target;
  EXPECT_FALSE(Ask("/fullscreen/map.js", "Content-Length: 0\r\n", "POST").starts_with("HTTP/1.1 200"));
}

TEST_F(WebSiteOnDisk, SendsAFileAgainOnlyWhenItHasChanged) {
  const std::string first = Ask("/fullscreen/map.js");
  const std::size_t tag = first.find("ETag: ");
  ASSERT_NE(tag, std::string::npos);
  const std::string condition = "If-None-Match" + first.substr(tag + 4, first.find('\n', tag) - tag - 3);
  EXPECT_TRUE(Ask("/fullscreen/map.js", condition).starts_with("HTTP/1.1 304"));
  folder_.Write("web/fullscreen/map.js", "let changed;");
  EXPECT_TRUE(Ask("/fullscreen/map.js", condition).starts_with("HTTP/1.1 200"));
}

TEST_F(WebSiteOnDisk, LetsAPageAskNoOtherHostUnlessAnOnlineMapIsSet) {
  folder_.Write("web/fullscreen/settings.json", "{ \"onlineMap\": null }");
  const std::string closed = Ask("/fullscreen/index.php");
  for (const char* part : {"Content-Security-Policy: default-src 'self'; ", "; form-action 'none'; ",
                           "; frame-ancestors 'self'; "})
    EXPECT_NE(closed.find(part), std::string::npos) << closed;
  EXPECT_EQ(closed.find("http:"), std::string::npos);
  EXPECT_TRUE(Ask("/fullscreen/settings.json").ends_with("null }"));

  const struct {
    std::string url, policyEnd;
  } cases[] = {
      {"https://maps.example.org:8443/{z}/{x}/{y}.png", " tile: https://maps.example.org:8443\r\n"},
      {"http://t-{s}.maps.example.org?{z}{x}{y}",
       " tile: http://t-a.maps.example.org http://t-b.maps.example.org http://t-c.maps.example.org\r\n"},
      {"https://{s}.com/{z}/{x}/{y}", " tile: https://a.com https://b.com https://c.com\r\n"},
  };
  for (const auto& c : cases) {
    WebSite open(root_, OnlineMap{c.url, "The \"makers\" \\ others"});
    port_ = open.Start("127.0.72.3", 0);
    const std::string page = Ask("/fullscreen/index.php");
    EXPECT_NE(page.find(c.policyEnd), std::string::npos) << page;
    const std::string settings = Ask("/fullscreen/settings.json?x=1");
    EXPECT_NE(settings.find("Content-Type: application/json"), std::string::npos);
    EXPECT_TRUE(settings.ends_with("{\"onlineMap\":{\"url\":\"" + c.url +
                                   R"(","attribution":"The \"makers\" \\ others"}})" + "\n"))
        << settings;
  }
}

TEST_F(WebSiteOnDisk, KeepsAConnectionForFurtherRequests) {
  Ask("/");
  const std::string big(45 * 65536 + 1, 'x');  // pieces, and a byte
  folder_.Write("web/big.js", big);
  TestClient client({asio::ip::make_address("127.0.72.3"), static_cast<std::uint16_t>(port_)});
  // The second waits behind the first, in pieces; HEAD has no body.
  client.Send("GET /big.js HTTP/1.1\r\n\r\nHEAD /big.js HTTP/1.1\r\n\r\nGET /fullscreen/map.js HT");
  client.Send("TP/1.1\r\nCONNECTION: close\r\n\r\n");
  const std::string all = client.ReceiveAll();
  EXPECT_NE(all.find("\r\n\r\n" + big + "HTTP/1.1 200 OK\r\n"), std::string::npos);
  EXPECT_TRUE(all.ends_with("\r\n\r\nlet x;"));
  EXPECT_NE(all.find("Content-Length: 2949121\r\n", big.size()), std::string::npos);
}

TEST_F(WebSiteOnDisk, RefusesWhatNoBrowserSends) {
  const struct {
    std::string request;
    const char* status;
  } cases[] = {
      {"GET /" + std::string(1 << 20, 'a'), "431"},  // a line that never ends
      {"GET / HTTP/1.1\r\n" + std::string(1 << 20, 'a'), "431"},
      {"POST /fullscreen/map.js HTTP/1.1\r\n\r\n", "405"},
      {"GET /fullscreen/map.js HTTP/1.1\r\nContent-Length: 5\r\n\r\nhello", "413"},
      {"GET /fullscreen/map.js HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\n", "413"},
      {"GET /fullscreen/map.js HTTP/2.0\r\n\r\n", "400"},
      {"GET http://other/ HTTP/1.1\r\n\r\n", "400"},
      {"GET /%4 HTTP/1.1\r\n\r\n", "400"},
      {"GET / HTTP/1.1\r\nno colon\r\n\r\n", "400"},
      {"GET / HTTP/1.1\r\n : blank name\r\n\r\n", "400"},
      {std::string("\x16\x03\x01\x00\xA5\x01\r\n\r\n", 10), "400"},
  };
  Ask("/");
  for (const auto& c : cases) {
    TestClient client({asio::ip::make_address("127.0.72.3"), static_cast<std::uint16_t>(port_)});
    client.Send(c.request);
    // The system throws the answer away where the rest of the request comes behind it.
    const std::string answer = client.ReceiveAll();
    EXPECT_FALSE(client.TimedOut()) << c.request.substr(0, 40);
    EXPECT_TRUE(answer.empty() || answer.starts_with(std::string("HTTP/1.1 ") + c.status)) << answer;
  }
  EXPECT_TRUE(Ask("/fullscreen/map.js").ends_with("let x;"));
}

// A piece of a file may last longer on a slow line than a stall may: each part of it that is taken counts.
TEST_F(WebSiteOnDisk, GivesASlowBrowserTimeAsLongAsItTakesSomething) {
  using asio::ip::tcp;
  folder_.Write("web/piece.js", std::string(60'000, 'x'));
  const SiteContent content{root_, "", {}};
  asio::io_context context;
  tcp::acceptor acceptor(context, {asio::ip::make_address("127.0.72.4"), 0});
  acceptor.set_option(tcp::socket::send_buffer_size(2048));
  tcp::socket browser(context, tcp::v4());
  browser.set_option(tcp::socket::receive_buffer_size(2048));
  browser.connect(acceptor.local_endpoint());
  const auto connection = std::make_shared<WebConnection>(acceptor.accept(), content);
  connection->Start();
  asio::write(browser, asio::buffer("GET /piece.js HTTP/1.1\r\n\r\n"));
  std::array<char, 2048> part;
  std::set<std::chrono::steady_clock::time_point> deadlines;
  for (std::size_t taken = 0; taken < 60'000; taken += browser.read_some(asio::buffer(part))) {
    while (browser.available() == 0) ASSERT_GT(context.run_one_for(std::chrono::seconds(20)), 0u);
    deadlines.insert(connection->Deadline());
  }
  EXPECT_GT(deadlines.size(), 5u);
}

TEST_F(WebSiteOnDisk, GivesUpStalledConnectionsBeforeFreshOnes) {
  Ask("/");
  folder_.Write("web/big.js", std::string(8'000'000, 'x'));
  const asio::ip::tcp::endpoint site{asio::ip::make_address("127.0.72.3"), static_cast<std::uint16_t>(port_)};
  std::vector<std::unique_ptr<TestClient>> stalled, browser;
  for (int i = 0; i < 300; ++i) {
    stalled.push_back(std::make_unique<TestClient>(site));
    stalled.back()->Send(i % 3 == 0 ? "" : i % 3 == 1 ? "GET / HT" : "GET /big.js HTTP/1.1\r\n\r\n");
    if (i % 3 == 2) {
      EXPECT_FALSE(stalled.back()->Receive().empty()) << "it has begun";
    }
  }
  for (int i = 0; i < 12; ++i) browser.push_back(std::make_unique<TestClient>(site));
  for (const auto& client : browser) {
    client->Send("GET /fullscreen/map.js HTTP/1.1\r\nConnection: close\r\n\r\n");
    EXPECT_TRUE(client->ReceiveAll().ends_with("let x;"));
  }
}

}  // namespace
}  // namespace pallomir::station
