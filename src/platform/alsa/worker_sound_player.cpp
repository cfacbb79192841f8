#include "platform/alsa/worker_sound_player.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/alsa/wave_stream.h"

namespace pallomir {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kUntilRoom{20};     // a fifth of the buffer
constexpr milliseconds kUntilReopen{100};  // a device that went may be coming back
constexpr int kReopenings = 10;
constexpr milliseconds kPatienceAtEnd{80};

}  // namespace

struct WorkerSoundPlayer::Desk : std::enable_shared_from_this<Desk> {
  struct Job {
    std::filesystem::path file;
    int number = 0;
    bool hasNotice = false;
  };

  Desk(std::unique_ptr<PcmDevice> pcm, std::function<void(std::function<void()>)> poster)
      : device(std::move(pcm)), post(std::move(poster)) {}

  // The thread.
  void Run();
  std::optional<Job> NextJob();
  std::string Play(const Job& job);
  std::string Feed(WaveStream& sound);
  bool Write(std::span<const char> frames, const WaveHeader& form);
  bool Reopen(const WaveHeader& form);
  /// Waits so long, or until the play is to end. Whether it goes on.
  bool Pause(milliseconds time);
  void Finish(const std::string& why);

  // Either thread, with the mutex held.
  void TellFailure(const std::string& why);
  void TellEnd(std::optional<Job>& job);
  void EndAll();

  std::mutex mutex;
  std::condition_variable changed;
  std::optional<Job> next;
  std::optional<Job> current;  // its end has not been told
  bool isToEnd = false;        // the play that the thread is at
  bool isOver = false;         // nothing is told any more
  bool hasRun = false;         // the thread has nothing left to do

  std::unique_ptr<PcmDevice> device;  // the thread's
  std::function<void(std::function<void()>)> post;
  WorkerSoundPlayer* player = nullptr;  // the event loop's
};

void WorkerSoundPlayer::Desk::Run() {
  while (const auto job = NextJob()) Finish(Play(*job));
  device->Close();
  const std::lock_guard lock(mutex);
  hasRun = true;
  changed.notify_all();
}

std::optional<WorkerSoundPlayer::Desk::Job> WorkerSoundPlayer::Desk::NextJob() {
  std::unique_lock lock(mutex);
  changed.wait(lock, [this] { return next || isOver; });
  if (isOver) return std::nullopt;
  current = std::exchange(next, {});
  isToEnd = false;
  return current;
}

// Why it failed; empty where it has been played out or was ended.
std::string WorkerSoundPlayer::Desk::Play(const Job& job) {
  if (job.file.empty()) return "no sound file is open";
  WaveStream sound(job.file);
  if (std::string why = sound.Failure(); !why.empty()) return why;
  if (auto why = device->Open(sound.Form())) return *why;
  std::string why = Feed(sound);
  device->Close();
  return why;
}

std::string WorkerSoundPlayer::Desk::Feed(WaveStream& sound) {
  constexpr char kLost[] = "the sound device has gone";
  for (auto piece = sound.Next(); !piece.empty(); piece = sound.Next()) {
    if (!Write(piece, sound.Form())) return Pause({}) ? kLost : "";
  }
  if (std::string why = sound.Failure(); !why.empty()) return why;
  // Once the device holds nothing but this silence, all before it has been heard.
  const char silence = sound.Form().bits == 8 ? '\x80' : '\0';
  const std::vector<char> rest(device->BufferFrames() * sound.Form().FrameBytes(), silence);
  return Write(rest, sound.Form()) || !Pause({}) ? "" : kLost;
}

// False where the play is to end, or the device has gone for good.
bool WorkerSoundPlayer::Desk::Write(std::span<const char> frames, const WaveHeader& form) {
  while (!frames.empty()) {
    if (!Pause({})) return false;
    const auto taken = device->Write(frames);
    if (!taken && !Reopen(form)) return false;
    if (taken) frames = frames.subspan(*taken * form.FrameBytes());
    if (taken && *taken == 0 && !Pause(kUntilRoom)) return false;
  }
  return true;
}

bool WorkerSoundPlayer::Desk::Reopen(const WaveHeader& form) {
  for (int i = 0; i < kReopenings; ++i) {
    if (!device->Open(form)) return true;
    if (!Pause(kUntilReopen)) return false;
  }
  return false;
}

bool WorkerSoundPlayer::Desk::Pause(milliseconds time) {
  std::unique_lock lock(mutex);
  return !changed.wait_for(lock, time, [this] { return isToEnd || isOver; });
}

void WorkerSoundPlayer::Desk::Finish(const std::string& why) {
  const std::lock_guard lock(mutex);
  if (!why.empty() && !isToEnd && !isOver) TellFailure(why);
  TellEnd(current);
}

void WorkerSoundPlayer::Desk::TellFailure(const std::string& why) {
  post([desk = shared_from_this(), why] {
    if (desk->player && desk->player->failed) desk->player->failed(why);
  });
}

void WorkerSoundPlayer::Desk::TellEnd(std::optional<Job>& job) {
  if (const auto gone = std::exchange(job, {}); gone && gone->hasNotice && !isOver) {
    post([desk = shared_from_this(), number = gone->number] {
      if (desk->player && desk->player->ended) desk->player->ended(number);
    });
  }
}

// What sounds is told to be over at once, also where the thread has yet to notice.
void WorkerSoundPlayer::Desk::EndAll() {
  isToEnd = true;
  TellEnd(current);
  TellEnd(next);
}

WorkerSoundPlayer::WorkerSoundPlayer(std::unique_ptr<PcmDevice> device,
                                     std::function<void(std::function<void()>)> post)
    : desk_(std::make_shared<Desk>(std::move(device), std::move(post))) {
  desk_->player = this;
}

WorkerSoundPlayer::~WorkerSoundPlayer() {
  desk_->player = nullptr;
  if (!thread_.joinable()) return;
  bool hasRun = false;
  {
    std::unique_lock lock(desk_->mutex);
    desk_->isOver = true;
    desk_->changed.notify_all();
    hasRun = desk_->changed.wait_for(lock, kPatienceAtEnd, [this] { return desk_->hasRun; });
  }
  if (hasRun) {
    thread_.join();
  } else {
    thread_.detach();
  }
}

void WorkerSoundPlayer::Open(const std::filesystem::path& file) { file_ = file; }

void WorkerSoundPlayer::Play(int number, bool withNotice) {
  const std::lock_guard lock(desk_->mutex);
  desk_->EndAll();
  desk_->next = Desk::Job{file_, number, withNotice};
  desk_->changed.notify_all();
  if (thread_.joinable()) return;
  try {
    // It keeps the desk alive where the player has not waited for it.
    thread_ = std::thread([desk = desk_] { desk->Run(); });
  } catch (const std::system_error& error) {
    desk_->TellFailure(error.what());
    desk_->EndAll();
  }
}

void WorkerSoundPlayer::Stop() {
  const std::lock_guard lock(desk_->mutex);
  desk_->EndAll();
  desk_->changed.notify_all();
}

void WorkerSoundPlayer::Close() {
  Stop();
  file_.clear();
}

}  // namespace pallomir
