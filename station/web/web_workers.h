#pragma once

#include <asio/io_context.hpp>
#include <asio/thread_pool.hpp>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <stop_token>
#include <string>

namespace pallomir::station {

/// An answer of the web site that is no file.
struct WebAnswer {
  std::string status;   ///< "200 OK"
  std::string type;     ///< as in a Content-Type header
  std::string text;     ///< all of it
  std::string headers;  ///< others, each with its line end
};

/// Answers requests for an address, by their query as it stands. Called on any thread, on several at once.
/// Takes a minute at most, and ends soon after it is told to stop; then its answer goes nowhere.
using WebService = std::function<WebAnswer(const std::string& query, const std::stop_token& stop)>;

/// Where answers are made that take their time: a few threads beside the one that serves the connections. All
/// but the work itself is called on that thread.
class WebWorkers {
 public:
  using Work = std::function<WebAnswer(const std::stop_token&)>;
  using Done = std::function<void(const WebAnswer&)>;

  static constexpr std::size_t kMost = 2;

  /// `context` must outlive it, and is that of the connections.
  explicit WebWorkers(asio::io_context& context) : context_(context) {}
  /// Stops all work and waits for its end.
  ~WebWorkers();
  WebWorkers(const WebWorkers&) = delete;
  WebWorkers& operator=(const WebWorkers&) = delete;

  /// Begins to work and calls `done` later, stopped or not. Returns what the work can be stopped by, or
  /// nothing where kMost are at work.
  std::optional<std::stop_source> Start(Work work, Done done);

 private:
  asio::io_context& context_;
  std::uint64_t started_ = 0;
  std::map<std::uint64_t, std::stop_source> running_;
  asio::thread_pool threads_{kMost};
};

}  // namespace pallomir::station
