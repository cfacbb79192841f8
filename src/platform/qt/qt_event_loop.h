#pragma once

#include <QObject>
#include <thread>
#include <unordered_map>

#include "platform/event_loop.h"

namespace pallomir {

/// The event loop of the application object. What was posted and has not run yet is dropped with this object.
class QtEventLoop : public EventLoop {
 public:
  ~QtEventLoop() override;
  std::unique_ptr<Timer> CreateTimer(const std::string& name, int intervalMilliseconds,
                                     std::function<void()> tick) override;
  void Post(std::function<void()> work) override;
  void RunBeside(std::function<void()> work, std::function<void()> then) override;

 private:
  std::unordered_map<int, std::thread> threads_;
  int lastThread_ = 0;
  QObject context_;
};

}  // namespace pallomir
