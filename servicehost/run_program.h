#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace pallomir::servicehost {

/// How a program ended, and what it wrote to its standard output and error (the first 16 KiB of it).
struct RunOutcome {
  int exitCode = -1;    ///< negative: not started, ended by a signal, or killed when its time was over
  std::string problem;  ///< says why where the exit code is negative
  std::string output;

  bool Succeeded() const { return exitCode == 0; }
  /// One line for the user: the problem, else the last line of the output, else the exit code.
  std::string Reason() const;
};

/// Runs the program to its end, or kills it with its process group after `limit`.
RunOutcome RunProgram(const std::vector<std::string>& command, std::chrono::milliseconds limit);

}  // namespace pallomir::servicehost
