#pragma once

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace pallomir::fakes {

/// A program that the test started. What it writes to its standard output and error is read line by line. The
/// process ends with the object, at the latest.
class Process {
 public:
  /// `environment` is added to the test's own.
  Process(const std::vector<std::string>& command,
          const std::map<std::string, std::string>& environment = {});
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  /// Waits for a line that holds `text`, among those not read yet; nothing when the process ends or says
  /// nothing of the kind within the time.
  std::optional<std::string> Await(const std::string& text,
                                   std::chrono::milliseconds patience = std::chrono::seconds(60));

  /// Everything read so far.
  const std::string& Output() const { return output_; }

  void Signal(int number);

  /// Waits for the end: the exit code, or minus the signal that killed it; -1000 when it does not end in
  /// time.
  int Wait(std::chrono::milliseconds patience = std::chrono::seconds(30));

 private:
  bool ReadMore(std::chrono::steady_clock::time_point until);

  pid_t pid_ = -1;
  int pipe_ = -1;
  std::string output_;
  std::size_t searched_ = 0;
  std::optional<int> exitCode_;
};

/// What the client's own environment must be for its files to lie in `folder`: profile, share, config,
/// runtime. `platform` is the window system that it is shown on.
std::map<std::string, std::string> ClientEnvironment(const std::filesystem::path& folder,
                                                     const std::string& platform);

}  // namespace pallomir::fakes
