#include "tracking/record_rows_avx2.h"

#include "tracking/packets.h"
#include "tracking/record_rows_plain.h"

// A row is its record with the bytes of each field turned round and two zeros behind it: one shuffle, for two
// records at a time. A load of 32 bytes from two before a pair on has a whole record in each of its halves;
// as it takes in two bytes before the pair and two behind, the first and the last records, which have none
// there, are left to the plain form.

#if defined(__x86_64__)

#include <immintrin.h>

#include <algorithm>
#include <cstdint>

namespace pallomir {

__attribute__((target("avx2,fma"))) void RowsByAvx2(ByteView records, std::span<DataPoint> rows) {
  // Two rows where the second would straddle a vector: stores across cache lines cost double.
  const std::size_t oldest =
      std::min<std::size_t>(reinterpret_cast<std::uintptr_t>(rows.data()) % 32 == 0 ? 2 : 1, rows.size());
  RowsPlainly(records.subspan((rows.size() - oldest) * kRecordSize), rows.first(oldest));
  const __m256i turned = _mm256_setr_epi8(5, 4, 3, 2, 9, 8, 7, 6, 13, 12, 11, 10, 15, 14, -1, -1,  //
                                          3, 2, 1, 0, 7, 6, 5, 4, 11, 10, 9, 8, 13, 12, -1, -1);
  constexpr int kSwapHalves = _MM_SHUFFLE(1, 0, 3, 2);
  std::size_t left = rows.size() - oldest;
  const std::uint8_t* record = records.data() + left * kRecordSize;
  auto* two = reinterpret_cast<__m256i*>(rows.data() + oldest);
  for (; left > 4; left -= 4, two += 2) {
    record -= 4 * kRecordSize;
    const __m256i newer = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(record - 2));
    const __m256i older = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(record + 2 * kRecordSize - 2));
    _mm256_storeu_si256(two, _mm256_permute4x64_epi64(_mm256_shuffle_epi8(older, turned), kSwapHalves));
    _mm256_storeu_si256(two + 1, _mm256_permute4x64_epi64(_mm256_shuffle_epi8(newer, turned), kSwapHalves));
  }
  RowsPlainly(records, rows.last(left));
}

}  // namespace pallomir

#else

#include <cstdlib>

namespace pallomir {

void RowsByAvx2(ByteView, std::span<DataPoint>) { std::abort(); }  // HasAvx2() is false here

}  // namespace pallomir

#endif
