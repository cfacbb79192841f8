#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "station/web/online_map.h"

namespace pallomir::station {

/// Serves the files of a folder over HTTP, on a thread of its own from Start until it is destroyed.
class WebSite {
 public:
  /// The map page is told of `onlineMap`, and may then ask that host too; else only this site.
  explicit WebSite(std::filesystem::path root, std::optional<OnlineMap> onlineMap = std::nullopt);
  ~WebSite();

  WebSite(const WebSite&) = delete;
  WebSite& operator=(const WebSite&) = delete;

  /// Listens on `port`, or on any free one for 0. Returns the port; 0 where it can't be had.
  int Start(const std::string& address, int port);

 private:
  struct Server;
  std::unique_ptr<Server> server_;
};

}  // namespace pallomir::station
