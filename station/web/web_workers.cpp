#include "station/web/web_workers.h"

#include <asio/post.hpp>
#include <cassert>
#include <utility>

namespace pallomir::station {

WebWorkers::~WebWorkers() {
  for (auto& [number, stop] : running_) stop.request_stop();
  threads_.join();
}

std::optional<std::stop_source> WebWorkers::Start(Work work, Done done) {
  assert(running_.size() <= kMost);
  if (running_.size() == kMost) return std::nullopt;
  const std::uint64_t number = ++started_;
  std::stop_source stop;
  running_.emplace(number, stop);
  // What `done` holds belongs to the connections' thread, so it is handed back to it and not dropped here.
  asio::post(threads_, [this, number, work = std::move(work), done = std::move(done),
                        token = stop.get_token()]() mutable {
    asio::post(context_, [this, number, answer = work(token), done = std::move(done)] {
      running_.erase(number);
      done(answer);
    });
  });
  return stop;
}

}  // namespace pallomir::station
