#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "alerts/alert_view.h"
#include "base/trace.h"
#include "platform/event_loop.h"
#include "platform/sound_player.h"
#include "settings/stored_choices.h"

namespace pallomir {

/// The signal that new data have come: a sound, played once, or again and again until the user closes a
/// window.
class AlertSignal {
 public:
  /// `sounds` is the folder of the sound files. All that is given by reference outlives this object.
  AlertSignal(AlertView& view, SoundPlayer& player, EventLoop& loop, Trace& trace, AlertChoices& choices,
              std::filesystem::path sounds);

  /// While it gives true, nothing is heard and no window shows.
  std::function<bool()> isMuted = [] { return false; };
  /// Mode or sound are other ones now.
  std::function<void()> changed = [] {};

  /// Gives the signal, unless a persistent one sounds already.
  void Start();
  bool IsPersisting() const { return isPersisting_; }

  // What the user does.
  void ChooseMode(int mode);    ///< ends what persists
  void ChooseSound(int sound);  ///< 1..7; plays it once, or goes on with it
  void Silence();               ///< ends all at once

  /// The window has another size: what sounds stops. What persists goes on when its second is over.
  void StopPlaying();
  void Close();

 private:
  void Play(bool withNotice);
  void PlayAnew();
  void EndPersisting();
  void OnEnded(int number);
  void OnFailed(const std::string& why);
  void OnTick();
  void Repeat();

  AlertView& view_;
  SoundPlayer& player_;
  Trace& trace_;
  AlertChoices& choices_;
  std::filesystem::path sounds_;
  bool isPersisting_ = false;
  bool isSoundDone_ = false;         // the newest play has ended
  bool hasIntervalElapsed_ = false;  // a second has passed since its start
  int lastPlay_ = 0;
  bool hasFailed_ = false;   // the newest play
  std::string toldFailure_;  // the trace's last word on failures
  std::unique_ptr<Timer> persistTimer_;
};

}  // namespace pallomir
