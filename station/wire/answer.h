#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "station/store/position_source.h"
#include "station/wire/data_request.h"

namespace pallomir::station {

/// The packets that answer one request, made one at a time: the packet with the oldest first record goes
/// first. All that it holds is how far each unit has been sent, so an answer of any length takes no memory,
/// and reports that arrive later simply follow.
class Answer {
 public:
  /// The source must outlive the answer.
  Answer(PositionSource& source, const DataRequest& request);

  /// Looks whether units that had nothing more to send have something new.
  void LookForNew();

  bool HasMore() const;

  /// The end of the window: nothing later will ever be sent.
  Millis Until() const { return until_; }

  /// Empty when there is no more at the moment.
  Bytes NextPacket();

 private:
  struct UnitProgress {
    std::string id;
    Millis next = 0;              ///< everything before this has been sent
    std::optional<Millis> first;  ///< the time of the oldest record not sent, where there is one
  };

  void Look(UnitProgress& unit);

  PositionSource& source_;
  Millis until_;
  std::vector<UnitProgress> units_;
};

}  // namespace pallomir::station
