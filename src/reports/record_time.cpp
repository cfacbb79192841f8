#include "reports/record_time.h"

#include <algorithm>

namespace pallomir {
namespace {

const Millis kFirstSecond = ToMillis({2000, 1, 1});
const Millis kLastSecond = ToMillis({2031, 12, 31, 23, 59, 59});
constexpr TimeSpan kNoTime{1, 0};

}  // namespace

TimeSpan SpanOf(Millis from, Millis until) {
  from = std::max(from, kFirstSecond);
  until = std::min(until, kLastSecond);
  if (until < from) return kNoTime;
  const auto first = EncodePackedTime(from + kSecond - 1), last = EncodePackedTime(until);
  return first && last && *first <= *last ? TimeSpan{*first, *last} : kNoTime;
}

Millis MomentOf(std::uint32_t packed) {
  const auto field = [packed](int shift, std::uint32_t mask) {
    return static_cast<int>(packed >> shift & mask);
  };
  return ToMillis(
      {2000 + field(26, 31), field(22, 15), field(17, 31), field(12, 31), field(6, 63), field(0, 63)});
}

}  // namespace pallomir
