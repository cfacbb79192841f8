#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "station/web/online_map.h"

namespace pallomir::station {

/// Serves the files of a folder over HTTP, on its own thread, from Start until it is destroyed.
class WebSite {
 public:
  /// The map page shows `onlineMap`, if there is one, and may load pictures from its host too. Without one it
  /// may load from this site only.
  explicit WebSite(std::filesystem::path root, std::optional<OnlineMap> onlineMap = std::nullopt);
  ~WebSite();

  WebSite(const WebSite&) = delete;
  WebSite& operator=(const WebSite&) = delete;

  /// Listens on an IPv4 address in dotted form and `port`, or on any free port for 0. Returns the port, or 0
  /// if that can't be done. Not to be called again once it has succeeded.
  int Start(const std::string& address, int port);

 private:
  struct Server;
  std::unique_ptr<Server> server_;
};

}  // namespace pallomir::station
