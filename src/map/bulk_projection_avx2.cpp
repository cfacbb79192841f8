#include "map/bulk_projection_avx2.h"

#include "map/bulk_projection_plain.h"
#include "map/latitude_polynomials.h"

// Four rows at a time. It may round its approximations otherwise than the plain form, because it multiplies
// and adds in one step: latitude_polynomials.h says why neither shows in a result.

#if defined(__x86_64__)

#include <immintrin.h>

#include <cstddef>
#include <cstring>

namespace pallomir {

namespace {

// Half a polynomial each of two latitudes' slices: the terms at `polynomials` and behind it.
__attribute__((target("avx2,fma"))) inline __m256d Terms(const double* polynomials, std::int32_t lat,
                                                         std::int32_t otherLat) {
  const auto at = [polynomials](std::int32_t latitude) {
    const auto slice = static_cast<std::uint32_t>(latitude + kSlicesEnd) >> kSliceShift;
    return polynomials + std::size_t{slice} * std::tuple_size_v<LatitudePolynomial>;
  };
  return _mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_loadu_pd(at(lat))), _mm_loadu_pd(at(otherLat)), 1);
}

__attribute__((target("avx2,fma"))) inline __m128 LoadRow(const DataPoint& row) {
  return _mm_loadu_ps(reinterpret_cast<const float*>(&row));
}

__attribute__((target("avx2,fma"))) inline void StorePositions(DataPoint* two, __m128i positions) {
  const std::int64_t halves[] = {_mm_cvtsi128_si64(positions), _mm_extract_epi64(positions, 1)};
  for (int i = 0; i < 2; ++i) {
    std::memcpy(reinterpret_cast<char*>(two + i) + offsetof(DataPoint, x), &halves[i], sizeof halves[i]);
  }
}

}  // namespace

__attribute__((target("avx2,fma"))) void ProjectByAvx2(std::span<DataPoint> rows) {
  const double* const lowTerms = LatitudePolynomials()->data();
  const double* const highTerms = lowTerms + 2;
  const __m256d rounder = _mm256_set1_pd(0x1.8p52);
  const __m256d sign = _mm256_set1_pd(-0.0);
  const __m256d certain = _mm256_set1_pd(0.5 - kDoubt);
  const std::size_t blocks = rows.size() / 4;
  DataPoint* row = rows.data();
  for (DataPoint* const end = row + blocks * 4; row != end; row += 4) {
    // The rows' middle fields: x y x y.
    const __m128 positions01 = _mm_shuffle_ps(LoadRow(row[0]), LoadRow(row[1]), _MM_SHUFFLE(2, 1, 2, 1));
    const __m128 positions23 = _mm_shuffle_ps(LoadRow(row[2]), LoadRow(row[3]), _MM_SHUFFLE(2, 1, 2, 1));
    const __m128i lat = _mm_castps_si128(_mm_shuffle_ps(positions01, positions23, _MM_SHUFFLE(2, 0, 2, 0)));
    const __m128i lng = _mm_castps_si128(_mm_shuffle_ps(positions01, positions23, _MM_SHUFFLE(3, 1, 3, 1)));
    const __m256d x = _mm256_fmadd_pd(_mm256_cvtepi32_pd(lng), _mm256_set1_pd(kUnitsPerLongitude),
                                      _mm256_set1_pd(kWorldSize / 2));

    // Rows 0, 2 | 1, 3 side by side give each term in the order of the rows.
    const __m256d low02 = Terms(lowTerms, row[0].x, row[2].x);
    const __m256d low13 = Terms(lowTerms, row[1].x, row[3].x);
    const __m256d high02 = Terms(highTerms, row[0].x, row[2].x);
    const __m256d high13 = Terms(highTerms, row[1].x, row[3].x);
    const __m256d d = _mm256_cvtepi32_pd(_mm_and_si128(lat, _mm_set1_epi32(kSlice - 1)));
    __m256d y = _mm256_unpackhi_pd(high02, high13);
    y = _mm256_fmadd_pd(y, d, _mm256_unpacklo_pd(high02, high13));
    y = _mm256_fmadd_pd(y, d, _mm256_unpackhi_pd(low02, low13));
    y = _mm256_fmadd_pd(y, d, _mm256_unpacklo_pd(low02, low13));
    const __m256d rounded = _mm256_sub_pd(_mm256_add_pd(y, rounder), rounder);
    const __m256d off = _mm256_andnot_pd(sign, _mm256_sub_pd(y, rounded));
    const int doubtful = _mm256_movemask_pd(_mm256_cmp_pd(off, certain, _CMP_NLT_UQ));

    const __m128i wholeX = _mm256_cvtpd_epi32(x);  // halves to even
    const __m128i wholeY = _mm256_cvtpd_epi32(y);
    StorePositions(row, _mm_unpacklo_epi32(wholeX, wholeY));
    StorePositions(row + 2, _mm_unpackhi_epi32(wholeX, wholeY));
    if (doubtful != 0) [[unlikely]] {
      alignas(16) std::int32_t lats[4];
      _mm_store_si128(reinterpret_cast<__m128i*>(lats), lat);
      for (int i = 0; i < 4; ++i) {
        if (doubtful >> i & 1) row[i].y = LatToWorldY(lats[i]);
      }
    }
  }
  ProjectPlainly(rows.subspan(blocks * 4));
}

}  // namespace pallomir

#else

#include <cstdlib>

namespace pallomir {

void ProjectByAvx2(std::span<DataPoint>) { std::abort(); }  // HasAvx2() is false here

}  // namespace pallomir

#endif
