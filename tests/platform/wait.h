#pragma once

#include <QEventLoop>
#include <QTimer>

namespace pallomir {

/// Runs the event loop until the condition holds; false when it did not in time. Use this with the web engine
/// rather than QTest::qWaitFor, which sleeps 10 ms after each of the engine's many small steps.
template <class Condition>
[[nodiscard]] bool WaitFor(const Condition& condition, int milliseconds = 20000) {
  QEventLoop loop;
  QTimer look, deadline;
  QObject::connect(&look, &QTimer::timeout, &loop, [&] {
    if (condition()) loop.quit();
  });
  deadline.setSingleShot(true);
  QObject::connect(&deadline, &QTimer::timeout, &loop, &QEventLoop::quit);
  look.start(1);
  deadline.start(milliseconds);
  loop.exec();
  return condition();
}

/// Lets events come for a while in which nothing is expected.
inline void LetPass(int milliseconds) {
  (void)WaitFor([] { return false; }, milliseconds);
}

}  // namespace pallomir
