#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/event_loop.h"
#include "zones/zone_tree.h"

namespace pallomir {

/// Tells the page all zones: "*", a write for each zone in order, and their names behind them. The list may
/// be long: it goes out in parts, between which the window looks at its other events.
class ZoneListSender {
 public:
  /// Writes a text into a field of the page.
  using Write = std::function<void(const char* field, const std::string& text)>;

  /// The tree outlives the sender. It may change only right before `Start`.
  ZoneListSender(EventLoop& loop, const ZoneTree& tree, Write write);

  /// Begins anew with the tree as it is now.
  void Start();
  /// Sends the rest at once, so that the page knows each zone that it will be told of by its place.
  void Finish();
  /// Nothing more is sent: the page is gone.
  void Stop();
  bool IsSending() const { return timer_->IsEnabled(); }

 private:
  void SendPart();
  void SendNames();

  const ZoneTree& tree_;
  Write write_;
  std::unique_ptr<Timer> timer_;
  ZoneOrdinal nextZone_ = 0;
  ZoneOrdinal nextName_ = 0;
};

}  // namespace pallomir
