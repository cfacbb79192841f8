#include "station/web_site.h"

#include <httplib.h>

#include <thread>

#include "base/whole_file.h"
#include "station/web_files.h"

namespace pallomir::station {
namespace {

namespace fs = std::filesystem;

// A browser keeps some six connections; each holds a thread while it is open.
constexpr std::size_t kThreads = 16;
constexpr time_t kIdleSeconds = 1;
constexpr std::size_t kRequestsAConnection = 100;

// Milliseconds that its thread may take to get going.
constexpr int kStartAttempts = 5000;

// In place of the file of that name, which says that nothing is set.
constexpr const char* kPageSettings = "/fullscreen/settings.json";

// Nothing is ever sent to the site.
constexpr std::size_t kMaxUpload = 1024;

// Nothing that a page is made of comes near; a larger file was put there by mistake and would fill the
// memory.
constexpr std::size_t kMaxFileSize = 64 * 1024 * 1024;

// Two stations on one port would each get half of the requests, so the port is not shared.
void SetSocketOptions(socket_t socket) {
  const int on = 1;
  ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
}

// Changes whenever the file does.
std::string EntityTag(const fs::path& file) {
  std::error_code ignored;
  return '"' + std::to_string(fs::last_write_time(file, ignored).time_since_epoch().count()) + '-' +
         std::to_string(fs::file_size(file, ignored)) + '"';
}

// Where a page may get pictures from besides this site and the client's own tiles. Of the host
// {s}.example.org every sibling may be asked.
std::string PictureHosts(const std::optional<OnlineMap>& onlineMap) {
  if (!onlineMap) return "";
  const std::string& url = onlineMap->url;
  const std::size_t start = url.find("://") + 3;
  std::string host = url.substr(start, url.find_first_of("/?#", start) - start);
  if (const std::size_t server = host.find("{s}"); server != host.npos)
    host.replace(0, host.find('.', server), "*");
  return " " + url.substr(0, start) + host;
}

// Forbids a page everything that does not come from here, whatever it is made of.
std::string ContentPolicy(const std::optional<OnlineMap>& onlineMap) {
  return "default-src 'self'; style-src 'self' 'unsafe-inline'; object-src 'none'; base-uri 'none'; "
         "img-src 'self' data: blob: tile:" +
         PictureHosts(onlineMap);
}

std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') quoted += '\\';
    quoted += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
  }
  return quoted + '"';
}

std::string PageSettings(const OnlineMap& onlineMap) {
  return "{\"onlineMap\":{\"url\":" + Quoted(onlineMap.url) +
         ",\"attribution\":" + Quoted(onlineMap.attribution) + "}}\n";
}

void Serve(const fs::path& root, const httplib::Request& request, httplib::Response& response) {
  response.status = 404;
  const auto file = FindWebFile(root, request.path);
  if (!file) return;
  const std::string tag = EntityTag(*file);
  if (request.get_header_value("If-None-Match") == tag) {
    response.status = 304;
  } else {
    std::error_code error;
    auto content = ReadWholeFile(*file, kMaxFileSize, error);
    if (!content) return;
    response.status = 200;
    response.set_content(*std::move(content), ContentType(*file));
  }
  response.set_header("ETag", tag);
}

}  // namespace

struct WebSite::Server {
  httplib::Server http;
  std::thread thread;
};

WebSite::WebSite(fs::path root, std::optional<OnlineMap> onlineMap) : server_(std::make_unique<Server>()) {
  httplib::Server& http = server_->http;
  http.new_task_queue = [] { return new httplib::ThreadPool(kThreads); };
  http.set_keep_alive_timeout(kIdleSeconds);
  http.set_keep_alive_max_count(kRequestsAConnection);
  http.set_payload_max_length(kMaxUpload);
  http.set_socket_options(SetSocketOptions);
  http.set_default_headers({{"Cache-Control", "no-cache"},
                            {"X-Content-Type-Options", "nosniff"},
                            {"Content-Security-Policy", ContentPolicy(onlineMap)}});
  http.set_error_handler([](const httplib::Request&, httplib::Response& response) {
    if (response.status == 404) response.set_content("Not found\n", "text/plain; charset=utf-8");
  });
  if (onlineMap) {
    http.Get(kPageSettings,
             [settings = PageSettings(*onlineMap)](const httplib::Request&, httplib::Response& response) {
               response.set_content(settings, "application/json");
             });
  }
  http.Get(".*", [root = std::move(root)](const httplib::Request& request, httplib::Response& response) {
    Serve(root, request, response);
  });
}

WebSite::~WebSite() {
  server_->http.stop();
  if (server_->thread.joinable()) server_->thread.join();
}

int WebSite::Start(const std::string& address, int port) {
  httplib::Server& http = server_->http;
  if (port == 0)
    port = http.bind_to_any_port(address);
  else if (!http.bind_to_port(address, port))
    port = 0;
  if (port <= 0) return 0;
  server_->thread = std::thread([&http] { http.listen_after_bind(); });
  // A server that is told to stop before it runs would not stop.
  for (int i = 0; i < kStartAttempts && !http.is_running(); ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  return port;
}

}  // namespace pallomir::station
