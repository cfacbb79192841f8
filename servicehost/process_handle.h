#pragma once

#include <sys/types.h>

#include <chrono>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "servicehost/descriptor.h"

namespace pallomir::servicehost {

/// A process as nobody else can be it: process IDs come again, one with the same start (in clock ticks since
/// the boot, of this boot) does not.
struct ProcessIdentity {
  pid_t pid = 0;
  std::uint64_t startTicks = 0;
  std::string boot;

  bool operator==(const ProcessIdentity&) const = default;
};

/// Nothing when there is no such process, or it has ended already.
std::optional<ProcessIdentity> IdentityOf(pid_t pid);

/// "PID TICKS BOOT", and back; nothing for anything else.
std::string ToText(const ProcessIdentity& identity);
std::optional<ProcessIdentity> ParseIdentity(std::string_view text);

/// A descriptor that becomes readable when the process ends; empty when there is none.
Descriptor OpenProcess(pid_t pid);

/// A running process that was identified: signals can't reach another one that gets its ID later.
class ProcessHandle {
 public:
  /// Nothing when that process is gone.
  static std::optional<ProcessHandle> Open(const ProcessIdentity& identity);

  bool Signal(int number) const;
  /// False when it still runs after `limit`.
  bool AwaitEnd(std::chrono::milliseconds limit) const;
  /// TERM, and KILL when it still runs after `patience`. False when even that did not end it.
  bool End(std::chrono::milliseconds patience) const;

 private:
  explicit ProcessHandle(Descriptor process) : process_(std::move(process)) {}

  Descriptor process_;
};

}  // namespace pallomir::servicehost
