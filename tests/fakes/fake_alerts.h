#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "alerts/alert_view.h"
#include "fakes/fake_event_loop.h"
#include "platform/sound_player.h"

namespace pallomir::fakes {

/// Plays by the clock of the event loop: each sound lasts so long, or fails at once.
class FakeSoundPlayer : public SoundPlayer {
 public:
  explicit FakeSoundPlayer(FakeEventLoop& loop) : loop_(loop) {}

  void Open(const std::filesystem::path& file) override { open = file; }
  void Play(int number, bool withNotice) override {
    Stop();
    plays.push_back({loop_.Now(), open.stem().string(), withNotice});
    notice_ = withNotice ? std::optional(number) : std::nullopt;
    if (!failure.empty()) {
      loop_.Post([this] { failed(failure); });
      return Stop();
    }
    sounds = true;
    end_ = loop_.CreateTimer("Sound", lasts, [this] { Stop(); });
    end_->SetEnabled(true);
  }
  void Stop() override {
    sounds = false;
    if (end_) end_->SetEnabled(false);
    if (const auto number = std::exchange(notice_, {})) loop_.Post([this, n = *number] { ended(n); });
  }
  void Close() override {
    Stop();
    open.clear();
  }

  struct Played {
    long long at = 0;  ///< by the event loop's clock
    std::string sound;
    bool withNotice = false;
  };
  /// When plays began, in milliseconds.
  std::vector<long long> Times() const {
    std::vector<long long> times;
    for (const Played& play : plays) times.push_back(play.at);
    return times;
  }

  std::filesystem::path open;
  int lasts = 200;      ///< milliseconds
  std::string failure;  ///< plays fail with these words
  bool sounds = false;
  std::vector<Played> plays;

 private:
  FakeEventLoop& loop_;
  std::optional<int> notice_;
  std::unique_ptr<Timer> end_;
};

class FakeAlertView : public AlertView {
 public:
  void ShowPersist(std::function<void()> closed) override {
    persistClosed = std::move(closed);
    ++shown;
  }
  void HidePersist() override { persistClosed = {}; }
  void RaisePersist() override { ++raised; }
  void ShowMute(bool isMuted, const std::string& text) override {
    muted = isMuted;
    muteText = text;
  }
  bool IsOpen() const { return static_cast<bool>(persistClosed); }
  /// By the user.
  void Close() { std::exchange(persistClosed, {})(); }

  std::function<void()> persistClosed;
  int shown = 0;
  int raised = 0;
  bool muted = false;
  std::string muteText;
};

}  // namespace pallomir::fakes
