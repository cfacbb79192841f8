#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace pallomir {

/// A program that was started. It lives on when this object, or the client, ends.
class StartedProgram {
 public:
  virtual ~StartedProgram() = default;
  virtual std::int64_t Id() const = 0;
  virtual bool IsRunning() = 0;
  /// Once it has ended: 0..255, or 128 and the number of the signal that ended it.
  virtual int ExitCode() const = 0;
};

struct ProgramStart {
  int error = 0;                            ///< errno of a failure
  std::unique_ptr<StartedProgram> program;  ///< null when it failed
};

/// Starts programs detached: in a session of their own, without any file or socket of the client.
class ProgramStarter {
 public:
  virtual ~ProgramStarter() = default;
  virtual ProgramStart Start(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                             const std::filesystem::path& workingFolder) = 0;
  /// Shows a web page in the user's own web browser. False when the system knows none.
  virtual bool OpenPage(const std::string& address) = 0;
};

}  // namespace pallomir
