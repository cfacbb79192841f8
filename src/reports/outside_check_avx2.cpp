#include "reports/outside_check_avx2.h"

#if defined(__x86_64__)

#include <immintrin.h>

#include "reports/data_file.h"

namespace pallomir {

// Two records a register, each as four numbers: time, latitude, longitude and nothing.
__attribute__((target("avx2,fma"))) bool PairsLieOutsideByAvx2(const std::uint8_t* file, std::size_t pairs,
                                                               const PositionBox& box) {
  const __m256i fields =
      _mm256_broadcastsi128_si256(_mm_setr_epi8(3, 2, 1, 0, 8, 7, 6, 5, 12, 11, 10, 9, -1, -1, -1, -1));
  const __m256i withoutFlag = _mm256_broadcastsi128_si256(_mm_setr_epi32(0x7FFFFFFF, -1, -1, -1));
  const __m256i least = _mm256_broadcastsi128_si256(_mm_setr_epi32(0, box.minLatitude, box.minLongitude, 0));
  const __m256i most = _mm256_broadcastsi128_si256(_mm_setr_epi32(0, box.maxLatitude, box.maxLongitude, 0));
  const __m256i size = _mm256_sub_epi32(most, least);
  __m256i before = _mm256_setzero_si256(), descends = before, isInside = before;
  for (; pairs > 0; --pairs, file += 2 * kRecordSize) {
    const __m128i first = _mm_loadu_si128(reinterpret_cast<const __m128i*>(file));
    const __m128i second = _mm_loadu_si128(reinterpret_cast<const __m128i*>(file + kRecordSize));
    const __m256i bytes = _mm256_inserti128_si256(_mm256_castsi128_si256(first), second, 1);
    const __m256i records = _mm256_and_si256(_mm256_shuffle_epi8(bytes, fields), withoutFlag);
    const __m256i earlier = _mm256_permute2x128_si256(before, records, 0x21);
    before = records;
    descends = _mm256_or_si256(descends, _mm256_cmpgt_epi32(earlier, records));
    const __m256i offset = _mm256_sub_epi32(records, least);
    const __m256i fits = _mm256_cmpeq_epi32(_mm256_min_epu32(offset, size), offset);
    isInside = _mm256_or_si256(isInside, _mm256_and_si256(fits, _mm256_shuffle_epi32(fits, 0xD8)));
  }
  const __m256i times = _mm256_broadcastsi128_si256(_mm_setr_epi32(-1, 0, 0, 0));
  const __m256i latitudes = _mm256_broadcastsi128_si256(_mm_setr_epi32(0, -1, 0, 0));
  return _mm256_testz_si256(descends, times) != 0 && _mm256_testz_si256(isInside, latitudes) != 0;
}

}  // namespace pallomir

#else

#include <cstdlib>

namespace pallomir {

// HasAvx2() is false here.
bool PairsLieOutsideByAvx2(const std::uint8_t*, std::size_t, const PositionBox&) { std::abort(); }

}  // namespace pallomir

#endif
