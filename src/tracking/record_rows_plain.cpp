#include "tracking/record_rows_plain.h"

#include "tracking/packets.h"

namespace pallomir {

void RowsPlainly(ByteView records, std::span<DataPoint> rows) {
  std::size_t position = rows.size() * kRecordSize;
  for (DataPoint& row : rows) {
    const WireRecord record = DecodeRecord(records, position -= kRecordSize);
    row = {record.time, record.latitude, record.longitude, record.status};
  }
}

}  // namespace pallomir
