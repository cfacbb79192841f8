#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/beeper.h"
#include "platform/browser.h"
#include "platform/clock.h"
#include "platform/instance_signal.h"
#include "platform/main_window.h"
#include "platform/named_mutex.h"
#include "platform/question_box.h"
#include "platform/settings.h"
#include "platform/user_registry.h"

namespace pallomir::fakes {

class FakeBrowser : public Browser {
 public:
  void Navigate(const std::string& address) override { navigations.push_back(address); }
  void WriteField(std::string_view field, std::string_view value) override {
    writes.emplace_back(std::string(field), std::string(value));
  }
  void Stop() override { stopped = true; }

  /// The values written into the field, oldest first.
  std::vector<std::string> Written(std::string_view field) const {
    std::vector<std::string> values;
    for (const auto& write : writes) {
      if (write.first == field) values.push_back(write.second);
    }
    return values;
  }

  std::vector<std::string> navigations;
  std::vector<std::pair<std::string, std::string>> writes;
  bool stopped = false;
};

class FakeClock : public Clock {
 public:
  Millis NowUtc() const override { return now; }
  double Seconds() const override { return 0; }
  std::optional<ZoneInfo> Zone() const override { return zone; }

  Millis now = ToMillis({2026, 11, 22, 20, 30, 0});
  std::optional<ZoneInfo> zone = ZoneInfo{300, 0, -60, ZoneInfo::Season::kStandard};
};

/// Keeps the open question until the test answers it.
class FakeQuestionBox : public QuestionBox {
 public:
  void Show(const Question& question, AnswerHandler then) override {
    shown.push_back(question);
    open = std::move(then);
  }
  void Dismiss() override { open = {}; }
  void BringForward() override { ++broughtForward; }
  bool IsOpen() const { return static_cast<bool>(open); }
  void AnswerIt(const Answer& answer = {true, ""}) {
    const AnswerHandler then = std::exchange(open, {});
    then(answer);
  }

  std::vector<Question> shown;
  AnswerHandler open;
  int broughtForward = 0;
};

class FakeSettings : public Settings {
 public:
  std::string Get(std::string_view key, std::string_view defaultValue) override {
    order.emplace_back(key);
    return values.try_emplace(std::string(key), defaultValue).first->second;
  }
  std::string Save(std::string_view key, std::string_view value) override {
    return values[std::string(key)] = saved[std::string(key)] = value;
  }

  std::optional<std::string> Flush() override {
    if (!failure) onDisk = saved;
    return failure;
  }

  std::map<std::string, std::string> values;
  std::map<std::string, std::string> saved;
  std::map<std::string, std::string> onDisk;
  std::optional<std::string> failure;
  std::vector<std::string> order;  // of the reads
};

class FakeRegistry : public UserRegistry {
 public:
  std::string Get(std::string_view key, std::string_view defaultValue) const override {
    const auto found = values.find(std::string(key));
    return found == values.end() ? std::string(defaultValue) : found->second;
  }
  void Save(std::string_view key, std::string_view value) override { values[std::string(key)] = value; }
  std::map<std::string, std::string> values;
};

class FakeMutex : public NamedMutex {
 public:
  bool IsOwnedElsewhere(const std::string&) override { return ownedElsewhere; }
  bool Create(const std::string&) override { return owned = creatable; }
  int Release() override { return owned ? (owned = false, 0) : 1; }
  void Close() override { closed = true; }
  std::int64_t Handle() const override { return 77; }

  bool ownedElsewhere = false;
  bool creatable = true;
  bool owned = false;
  bool closed = false;
};

class FakeSignal : public InstanceSignal {
 public:
  void Listen() override { listening = true; }
  void Stop() override { listening = false; }
  void AskToRaise(std::int64_t windowHandle) override { asked.push_back(windowHandle); }
  bool listening = false;
  std::vector<std::int64_t> asked;
};

class FakeBeeper : public Beeper {
 public:
  void Beep() override { ++beeps; }
  int beeps = 0;
};

class FakeWindow : public MainWindow {
 public:
  std::int64_t Handle() const override { return 4711; }
  PixelRect WorkArea() const override { return {0, 20, 1600, 1000}; }
  PixelRect Bounds() const override { return bounds; }
  void SetBounds(const PixelRect& to) override { bounds = to; }
  void Show() override { shown = true; }
  PixelRect Screen() const override { return {0, 0, 1600, 1024}; }
  bool HasWindowManager() const override { return true; }
  bool IsMaximisedOneWay() const override { return maximisedOneWay; }
  bool KnowsPosition() const override { return knowsPosition; }
  std::vector<PixelRect> Screens() const override { return {Screen()}; }
  void SetState(WindowMode to) override {
    state = to;
    if (resized) resized();
  }
  void SetTopmost(bool on) override { topmost = on; }
  void BringToForeground() override { ++raised; }
  void Activate() override { ++activated; }
  void Close() override { ++closeWanted; }

  std::function<void()> resized;  ///< a new state is another size
  PixelRect bounds;
  bool shown = false;
  WindowMode state = WindowMode::kNormal;
  bool topmost = false;
  bool knowsPosition = true;
  bool maximisedOneWay = false;
  int raised = 0;
  int activated = 0;
  int closeWanted = 0;
};

}  // namespace pallomir::fakes
