#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "platform/event_loop.h"

namespace pallomir::fakes {

/// An event loop whose time is moved by the test.
class FakeEventLoop : public EventLoop {
 public:
  std::unique_ptr<Timer> CreateTimer(const std::string& name, int intervalMilliseconds,
                                     std::function<void()> tick) override {
    return std::make_unique<FakeTimer>(*this, name, intervalMilliseconds, std::move(tick));
  }

  void Post(std::function<void()> work) override { posted_.push_back(std::move(work)); }

  void RunBeside(std::function<void()> work, std::function<void()> then) override {
    const auto whole = [work = std::move(work), then = std::move(then)] {
      work();
      then();
    };
    if (holdsWork) {
      held.push_back(whole);
    } else {
      Post(whole);
    }
  }
  /// Work beside the loop waits here while it is held.
  bool holdsWork = false;
  std::deque<std::function<void()>> held;
  void LetWorkEnd() {
    for (auto& work : std::exchange(held, {})) Post(std::move(work));
    RunPosted();
  }

  /// Runs what was posted, also what that posts.
  void RunPosted() {
    while (!posted_.empty()) {
      const auto work = std::move(posted_.front());
      posted_.pop_front();
      work();
    }
  }

  /// Lets time pass: ticks come in the order of their times.
  void Advance(int milliseconds) {
    const long long until = now_ + milliseconds;
    RunPosted();
    while (FakeTimer* next = NextDue(until)) {
      now_ = next->due;
      next->due += next->interval;
      next->tick();
      RunPosted();
    }
    now_ = until;
  }

  /// One tick of an enabled timer, whenever it is due.
  void Tick(const std::string& name) {
    for (const FakeTimer* timer : timers_) {
      if (timer->enabled && timer->name == name) return timer->tick();
    }
    throw std::logic_error(name + " is not enabled");
  }

  long long Now() const { return now_; }

  bool IsEnabled(const std::string& name) const {
    for (const FakeTimer* timer : timers_) {
      if (timer->name == name) return timer->enabled;
    }
    return false;
  }

 private:
  struct FakeTimer : Timer {
    FakeTimer(FakeEventLoop& owner, std::string timerName, int every, std::function<void()> work)
        : loop(owner), name(std::move(timerName)), interval(every), tick(std::move(work)) {
      loop.timers_.push_back(this);
    }
    ~FakeTimer() override { std::erase(loop.timers_, this); }
    void SetEnabled(bool on) override {
      if (on && !enabled) due = loop.now_ + interval;
      enabled = on;
    }
    bool IsEnabled() const override { return enabled; }

    FakeEventLoop& loop;
    std::string name;
    int interval;
    std::function<void()> tick;
    bool enabled = false;
    long long due = 0;
  };

  FakeTimer* NextDue(long long until) {
    FakeTimer* next = nullptr;
    for (FakeTimer* timer : timers_) {
      if (timer->enabled && timer->due <= until && (!next || timer->due < next->due)) next = timer;
    }
    return next;
  }

  std::vector<FakeTimer*> timers_;
  std::deque<std::function<void()>> posted_;
  long long now_ = 0;
};

}  // namespace pallomir::fakes
