#include "tracking/record_rows_avx2.h"

#include "tracking/packets.h"
#include "tracking/record_rows.h"

// A row is its record with the bytes of each field turned round and two zeros behind it: one shuffle of 16
// bytes, for two rows at a time. A load of 16 bytes takes in two of the record behind; the last record has
// none there and is left to the plain form.

#if defined(__x86_64__)

#include <immintrin.h>

namespace pallomir {

__attribute__((target("avx2,fma"))) void RowsByAvx2(ByteView records, std::span<DataPoint> rows) {
  if (rows.empty()) return;
  const RecordKernel plainly = RecordKernels().front();
  const std::size_t last = rows.size() - 1;
  plainly(records.subspan(last * kRecordSize), rows.first(1));
  const __m256i turned =
      _mm256_broadcastsi128_si256(_mm_setr_epi8(3, 2, 1, 0, 7, 6, 5, 4, 11, 10, 9, 8, 13, 12, -1, -1));
  const std::uint8_t* record = records.data() + last * kRecordSize;
  DataPoint* row = rows.data() + 1;
  for (std::size_t pairs = last / 2; pairs > 0; --pairs, row += 2) {
    record -= 2 * kRecordSize;
    const __m128i newer = _mm_loadu_si128(reinterpret_cast<const __m128i*>(record));
    const __m128i older = _mm_loadu_si128(reinterpret_cast<const __m128i*>(record + kRecordSize));
    const __m256i both = _mm256_inserti128_si256(_mm256_castsi128_si256(older), newer, 1);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(row), _mm256_shuffle_epi8(both, turned));
  }
  if (last % 2 == 1) plainly(records, rows.last(1));
}

}  // namespace pallomir

#else

namespace pallomir {

void RowsByAvx2(ByteView records, std::span<DataPoint> rows) { RecordKernels().front()(records, rows); }

}  // namespace pallomir

#endif
