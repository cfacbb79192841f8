#include "tracking/record_rows.h"

#include "base/processor.h"
#include "tracking/record_rows_avx2.h"
#include "tracking/record_rows_plain.h"

namespace pallomir {

std::span<const RecordKernel> RecordKernels() {
  static constexpr RecordKernel kernels[] = {RowsPlainly, RowsByAvx2};
  return std::span(kernels).first(HasAvx2() ? 2 : 1);
}

void RowsFromRecords(ByteView records, std::span<DataPoint> rows) {
  static const RecordKernel kernel = RecordKernels().back();
  kernel(records, rows);
}

}  // namespace pallomir
