#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace pallomir {

/// Plays one wave file at a time. No call waits for the file or for the device; what became of a play is told
/// from the event loop.
class SoundPlayer {
 public:
  virtual ~SoundPlayer() = default;

  /// A play with notice is over: played to its end, stopped or failed. Once for each, by its number.
  std::function<void(int number)> ended;
  /// A play came to nothing, or broke off; in words for the trace. Comes before the play's end is told.
  std::function<void(const std::string& why)> failed;

  /// The file that the next plays are of. Looked at only when it is played.
  virtual void Open(const std::filesystem::path& file) = 0;
  /// Plays the file from its beginning; a play that sounds ends. `number` names the play in its notice.
  virtual void Play(int number, bool withNotice) = 0;
  /// Ends the play that sounds, if there is one.
  virtual void Stop() = 0;
  /// The same, and lets go of the file.
  virtual void Close() = 0;
};

}  // namespace pallomir
