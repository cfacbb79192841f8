#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

namespace pallomir::station {

/// Serves the files of a folder over HTTP, on threads of its own from Start until it is destroyed.
class WebSite {
 public:
  explicit WebSite(std::filesystem::path root);
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
