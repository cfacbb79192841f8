#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace pallomir::servicehost {

enum class ProcessGroup {
  kOwn,     ///< can be killed with what it has started
  kSession  ///< stays when the session of the caller ends
};

/// Starts the program, which is looked up in PATH where it has no slash. Its standard input is empty,
/// standard output and error go to `output` (negative: nowhere), no other descriptor and no signal setting is
/// inherited. The process ID, or minus the error number.
pid_t Spawn(const std::vector<std::string>& command, int output, ProcessGroup group);

}  // namespace pallomir::servicehost
