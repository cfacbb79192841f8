#include "tracking/record_rows.h"

#include "base/processor.h"
#include "tracking/packets.h"
#include "tracking/record_rows_avx2.h"

namespace pallomir {
namespace {

void RowsPlainly(ByteView records, std::span<DataPoint> rows) {
  std::size_t position = rows.size() * kRecordSize;
  for (DataPoint& row : rows) {
    const WireRecord record = DecodeRecord(records, position -= kRecordSize);
    row = {record.time, record.latitude, record.longitude, record.status};
  }
}

}  // namespace

std::span<const RecordKernel> RecordKernels() {
  static constexpr RecordKernel kernels[] = {RowsPlainly, RowsByAvx2};
  return std::span(kernels).first(HasAvx2() ? 2 : 1);
}

void RowsFromRecords(ByteView records, std::span<DataPoint> rows) {
  static const RecordKernel kernel = RecordKernels().back();
  kernel(records, rows);
}

}  // namespace pallomir
