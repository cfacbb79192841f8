#pragma once

#include <QObject>

#include "platform/event_loop.h"

namespace pallomir {

/// The event loop of the application object. What was posted and has not run yet is dropped with this object.
class QtEventLoop : public EventLoop {
 public:
  std::unique_ptr<Timer> CreateTimer(const std::string& name, int intervalMilliseconds,
                                     std::function<void()> tick) override;
  void Post(std::function<void()> work) override;

 private:
  QObject context_;
};

}  // namespace pallomir
