#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "station/store/position_source.h"
#include "station/wire/data_request.h"

namespace pallomir::station {

/// Makes the packets that answer one request, one at a time, in order of their first records. It only
/// remembers how far each unit has been sent: so an answer takes no more memory however long it is, and
/// records that arrive later follow.
class Answer {
 public:
  /// The source must outlive the answer.
  Answer(PositionSource& source, const DataRequest& request);

  /// Asks again for the units that had nothing more to send.
  void LookForNew();

  bool HasMore() const;

  /// The end of the window: no later record will ever be sent.
  Millis Until() const { return until_; }

  /// The next packet of a unit, with at most kRecordsPerPacket records. Empty if there is no more at the
  /// moment.
  Bytes NextPacket();

 private:
  struct UnitProgress {
    std::string id;
    Millis next = 0;              ///< everything before this has been sent
    std::optional<Millis> first;  ///< the time of the oldest record not sent, where there is one
  };

  void FindFirst(UnitProgress& unit);

  PositionSource& source_;
  Millis until_;
  std::vector<UnitProgress> units_;
};

}  // namespace pallomir::station
