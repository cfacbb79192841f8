#pragma once

#include <optional>

#include "base/civil_time.h"
#include "tracking/server_connection.h"

namespace pallomir {

/// Looks once a second at a connection that is kept by itself, and tells when it has to be made anew although
/// no end of it was reported: a computer that slept, another network under it, a clock that was set. The
/// server sends nothing while there is nothing new, so silence alone proves nothing: it is tried.
class LiveWatch {
 public:
  static constexpr int kSettledSeconds = 30;     ///< of a connection that holds
  static constexpr int kSilenceSeconds = 120;    ///< after which the server is asked anew
  static constexpr int kPatienceSeconds = 30;    ///< for a server that does not take the connection
  static constexpr Millis kJump = 10 * kSecond;  ///< of the clock between two looks, beyond their second

  enum class Advice { kNothing, kAskAnew, kGiveUp };

  struct Facts {
    ServerConnection::State state = ServerConnection::State::kIdle;
    bool isWaiting = false;  ///< a lost connection is about to be tried again
    bool hasGap = false;     ///< points of a unit are known to be missing
    Millis nowUtc = 0;
    Millis askedUntil = 0;   ///< the end of what was asked for, UTC
    Millis wantedUntil = 0;  ///< the end of what is wanted by now, UTC
  };

  /// Another look follows within about a second.
  Advice Look(const Facts& facts);
  /// Nobody has looked for a while.
  void Begin() { lastLook_.reset(); }
  /// The connection is made anew.
  void Restarted();
  void Arrived() { silent_ = 0; }
  /// Whether the connection has brought data, or could have, for so long that it is a good one.
  bool HasSettled() const { return streaming_ >= kSettledSeconds; }

 private:
  Advice LookAtStream(const Facts& facts);

  std::optional<Millis> lastLook_;
  int connecting_ = 0;  // seconds, like the next two
  int streaming_ = 0;
  int silent_ = 0;
};

}  // namespace pallomir
