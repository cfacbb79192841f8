#include "station/web/web_site.h"

#include <algorithm>
#include <asio/io_context.hpp>
#include <asio/steady_timer.hpp>
#include <cassert>
#include <list>
#include <optional>
#include <thread>

#include "station/common/listener.h"
#include "station/common/text.h"
#include "station/web/web_connection.h"

namespace pallomir::station {
namespace {

using asio::ip::tcp;

// A browser keeps some six connections. When there are too many, the one that has been without progress for
// longest is closed: so a new one always gets through, and those that have stalled go first.
constexpr std::size_t kMaxConnections = 128;

constexpr std::chrono::seconds kCheckInterval{1};

// Hides the file of that name, which says that nothing is set.
constexpr const char* kPageSettings = "/fullscreen/settings.json";

// Forbids a page to load anything from elsewhere, except pictures of the online map.
std::string ContentPolicy(const std::optional<OnlineMap>& onlineMap) {
  return "default-src 'self'; style-src 'self' 'unsafe-inline'; object-src 'none'; base-uri 'none'; "
         "form-action 'none'; frame-ancestors 'self'; "
         "img-src 'self' data: blob: tile:" +
         PictureHosts(onlineMap);
}

std::string PageSettings(const OnlineMap& onlineMap) {
  return "{\"onlineMap\":{\"url\":" + QuotedForJson(onlineMap.url) +
         ",\"attribution\":" + QuotedForJson(onlineMap.attribution) + "}}\n";
}

}  // namespace

struct WebSite::Server {
  void Accept(tcp::socket socket) {
    DropOverdue();
    if (connections.size() >= kMaxConnections) {
      const auto stalled =
          std::ranges::min_element(connections, {}, [](const auto& c) { return c->LastProgress(); });
      (*stalled)->Close();
      connections.erase(stalled);
    }
    connections.push_back(std::make_shared<WebConnection>(std::move(socket), content));
    connections.back()->Start();
    assert(connections.size() <= kMaxConnections);
  }

  void DropOverdue() {
    const auto now = std::chrono::steady_clock::now();
    std::erase_if(connections, [now](const auto& connection) {
      if (connection->IsOpen() && connection->Deadline() < now) connection->Close();
      return !connection->IsOpen();
    });
  }

  void CheckEverySecond() {
    timer.expires_after(kCheckInterval);
    timer.async_wait([this](std::error_code error) {
      if (error) return;
      DropOverdue();
      CheckEverySecond();
    });
  }

  SiteContent content;
  asio::io_context context{1};
  WebWorkers workers{context};
  asio::steady_timer timer{context};
  std::list<std::shared_ptr<WebConnection>> connections;
  std::optional<Listener> listener;
  std::thread thread;
};

WebSite::WebSite(std::filesystem::path root, std::optional<OnlineMap> onlineMap)
    : server_(std::make_unique<Server>()) {
  SiteContent& content = server_->content;
  content.workers = &server_->workers;
  content.root = std::move(root);
  // Browsers must ask before they use their cache, and must not guess at types.
  content.headers =
      "Cache-Control: no-cache\r\nX-Content-Type-Options: nosniff\r\nContent-Security-Policy: " +
      ContentPolicy(onlineMap) + "\r\n";
  if (onlineMap) content.texts[kPageSettings] = {"application/json", PageSettings(*onlineMap)};
}

WebSite::~WebSite() {
  server_->context.stop();
  if (server_->thread.joinable()) server_->thread.join();
}

void WebSite::Serve(std::string path, WebService service, bool isForEveryone) {
  assert(!server_->listener);
  server_->content.services[std::move(path)] = {std::move(service), isForEveryone};
}

int WebSite::Start(const std::string& address, int port) {
  assert(!server_->listener);
  std::error_code error;
  const auto place = asio::ip::make_address_v4(address, error);
  if (error || port < 0 || port > 65535) return 0;
  tcp::acceptor acceptor(server_->context);
  if (Listen(acceptor, {place, static_cast<std::uint16_t>(port)})) return 0;
  const int opened = acceptor.local_endpoint(error).port();
  Server& server = *server_;
  // The log belongs to another thread, and what can't be accepted now is accepted soon.
  server.listener.emplace(
      std::move(acceptor), [&server](tcp::socket socket) { server.Accept(std::move(socket)); },
      [](const std::string&) {});
  server.CheckEverySecond();
  server.thread = std::thread([&server] { server.context.run(); });
  return opened;
}

}  // namespace pallomir::station
