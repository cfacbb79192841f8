#include "alerts/alert_signal.h"

#include <utility>

#include "alerts/alert_words.h"

namespace pallomir {

AlertSignal::AlertSignal(AlertView& view, SoundPlayer& player, EventLoop& loop, Trace& trace,
                         AlertChoices& choices, std::filesystem::path sounds)
    : view_(view),
      player_(player),
      trace_(trace),
      choices_(choices),
      sounds_(std::move(sounds)),
      persistTimer_(loop.CreateTimer("PersistTimer", 1000, [this] { OnTick(); })) {
  player_.ended = [this](int number) { OnEnded(number); };
  player_.failed = [this](const std::string& why) { OnFailed(why); };
}

void AlertSignal::Start() {
  if (isPersisting_ || isMuted()) return;
  isPersisting_ = choices_.enabled.Value() == kPersistentMode;
  if (!isPersisting_) return Play(false);
  PlayAnew();
  view_.ShowPersist([this] { isPersisting_ = false; });
}

void AlertSignal::ChooseMode(int mode) {
  choices_.enabled.Store(mode);
  EndPersisting();
  changed();
}

void AlertSignal::ChooseSound(int sound) {
  choices_.sound.Store(sound);
  changed();
  if (isMuted()) return;
  if (isPersisting_) {
    PlayAnew();
  } else {
    Play(false);
  }
}

void AlertSignal::Silence() {
  EndPersisting();
  player_.Close();
}

// The notice of the play's end follows, and with it the repetition where one is due.
void AlertSignal::StopPlaying() { player_.Stop(); }

void AlertSignal::Close() {
  Silence();
  persistTimer_->SetEnabled(false);
}

void AlertSignal::Play(bool withNotice) {
  player_.Close();
  player_.Open(sounds_ / (std::string(kAlertSounds[choices_.sound.Value() - 1].tag) + ".wav"));
  hasFailed_ = false;
  player_.Play(++lastPlay_, withNotice);
}

void AlertSignal::PlayAnew() {
  isSoundDone_ = false;
  hasIntervalElapsed_ = false;
  persistTimer_->SetEnabled(false);  // one that runs would not begin its second anew
  persistTimer_->SetEnabled(true);
  Play(true);
}

void AlertSignal::EndPersisting() {
  if (std::exchange(isPersisting_, false)) view_.HidePersist();
}

void AlertSignal::OnEnded(int number) {
  if (number != lastPlay_) return;  // of a play that a later one has taken the place of
  if (!hasFailed_) toldFailure_.clear();
  isSoundDone_ = true;
  Repeat();
}

// One line for however many plays fail alike.
void AlertSignal::OnFailed(const std::string& why) {
  hasFailed_ = true;
  if (std::exchange(toldFailure_, why) != why) trace_.Line("no alert sound: " + why);
}

void AlertSignal::OnTick() {
  persistTimer_->SetEnabled(false);
  hasIntervalElapsed_ = true;
  Repeat();
}

void AlertSignal::Repeat() {
  if (isPersisting_ && isSoundDone_ && hasIntervalElapsed_) PlayAnew();
}

}  // namespace pallomir
