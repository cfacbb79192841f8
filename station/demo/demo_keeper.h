#pragma once

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <stop_token>
#include <string>
#include <thread>

#include "station/common/log.h"
#include "station/store/unit_store.h"

namespace pallomir::station {

/// How many days before today are kept.
inline constexpr int kDemoDays = 14;

/// Keeps in a store what the demo units reported today and in the days before, so that searches find it.
class DemoRecorder {
 public:
  /// `store` is for this alone.
  explicit DemoRecorder(std::unique_ptr<UnitStore> store, int days = kDemoDays)
      : store_(std::move(store)), days_(days) {}

  /// Brings the store up to date: the newest day first, and days that are over once. Ends early, between two
  /// units, when it is told to stop. Returns an error message, or an empty text.
  std::string Record(Millis utcNow, const std::stop_token& stop);

 private:
  std::string RecordDay(Millis day, Millis utcNow, const std::stop_token& stop);

  std::unique_ptr<UnitStore> store_;
  int days_;
  std::set<Millis> done_;  // days that are over and kept
};

/// Has a recorder at work every hour, on a thread of its own that gives way to others, until it is destroyed.
class DemoKeeper {
 public:
  /// `log` is told, on that thread, what goes wrong, once for as long as it is the same.
  DemoKeeper(std::unique_ptr<UnitStore> store, std::function<Millis()> utcNow, Log log);

 private:
  void Run(const std::stop_token& stop);

  DemoRecorder recorder_;
  std::function<Millis()> utcNow_;
  Log log_;
  std::mutex mutex_;
  std::condition_variable_any wake_;
  std::jthread thread_;
};

}  // namespace pallomir::station
