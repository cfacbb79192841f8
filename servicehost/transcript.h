#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "servicehost/bounded_log.h"

namespace pallomir::servicehost {

/// What one run tells: short sentences to the user (ServiceName.InstallLog, rewritten at each run, and the
/// standard output), and everything else to the developer (ServiceName.log).
class Transcript {
 public:
  /// `folder` is the program's own.
  explicit Transcript(std::filesystem::path folder);

  /// Leaves the words that the run did not finish, for the case that it doesn't: the ones of an earlier run
  /// must not be taken for its own. The error when the folder can't be written.
  std::error_code Begin(const std::string& title);
  void Say(std::string_view sentence);
  void Detail(std::string_view line) { log_.Write(line); }
  /// Writes what was said.
  std::error_code Finish();

  const std::filesystem::path& File() const { return file_; }

 private:
  std::filesystem::path file_;
  BoundedLog log_;
  std::string title_;
  std::vector<std::string> lines_;
};

}  // namespace pallomir::servicehost
