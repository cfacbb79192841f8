#include "platform/qt/qt_event_loop.h"

#include <QMetaObject>
#include <QTimer>
#include <system_error>
#include <utility>

namespace pallomir {
namespace {

class QtTimer : public Timer {
 public:
  QtTimer(const std::string& name, int intervalMilliseconds, std::function<void()> tick) {
    timer_->setObjectName(QString::fromStdString(name));
    timer_->setInterval(intervalMilliseconds);
    QObject::connect(timer_, &QTimer::timeout, timer_, [tick = std::move(tick)] { tick(); });
  }

  // A timer may end inside its own tick; the object that is just emitting then lives until the loop is back.
  ~QtTimer() override {
    timer_->stop();
    timer_->disconnect();
    timer_->deleteLater();
  }

  QtTimer(const QtTimer&) = delete;
  QtTimer& operator=(const QtTimer&) = delete;

  void SetEnabled(bool enabled) override {
    if (enabled == timer_->isActive()) return;
    if (enabled) {
      timer_->start();
    } else {
      timer_->stop();
    }
  }

  bool IsEnabled() const override { return timer_->isActive(); }

 private:
  QTimer* timer_ = new QTimer;
};

}  // namespace

std::unique_ptr<Timer> QtEventLoop::CreateTimer(const std::string& name, int intervalMilliseconds,
                                                std::function<void()> tick) {
  return std::make_unique<QtTimer>(name, intervalMilliseconds, std::move(tick));
}

void QtEventLoop::Post(std::function<void()> work) {
  QMetaObject::invokeMethod(&context_, std::move(work), Qt::QueuedConnection);
}

QtEventLoop::~QtEventLoop() {
  for (auto& [number, thread] : threads_) thread.join();
}

void QtEventLoop::RunBeside(std::function<void()> work, std::function<void()> then) {
  const int number = ++lastThread_;
  const auto whole = [this, number, work = std::move(work), then = std::move(then)] {
    work();
    Post([this, number, then] {
      if (const auto thread = threads_.extract(number)) thread.mapped().join();
      then();
    });
  };
  try {
    threads_.emplace(number, std::thread(whole));
  } catch (const std::system_error&) {
    whole();  // no more threads: it takes its time here
  }
}

}  // namespace pallomir
