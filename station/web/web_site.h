#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "station/web/online_map.h"
#include "station/web/web_workers.h"

namespace pallomir::station {

/// Serves the files of a folder over HTTP, and what services answer, on threads of its own, from Start until
/// it is destroyed.
class WebSite {
 public:
  /// The map page shows `onlineMap`, if there is one, and may load pictures from its host too. Without one it
  /// may load from this site only.
  explicit WebSite(std::filesystem::path root, std::optional<OnlineMap> onlineMap = std::nullopt);
  ~WebSite();

  WebSite(const WebSite&) = delete;
  WebSite& operator=(const WebSite&) = delete;

  /// Has `service` answer requests for `path`, "/visits". Unless it is for everyone, those of other computers
  /// are refused, and so are those of pages of other hosts. To be called before Start.
  void Serve(std::string path, WebService service, bool isForEveryone);

  /// Listens on an IPv4 address in dotted form and `port`, or on any free port for 0. Returns the port, or 0
  /// if that can't be done. Not to be called again once it has succeeded.
  int Start(const std::string& address, int port);

 private:
  struct Server;
  std::unique_ptr<Server> server_;
};

}  // namespace pallomir::station
