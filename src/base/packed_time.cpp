#include "base/packed_time.h"

namespace pallomir {

std::optional<std::uint32_t> EncodePackedTime(Millis utc) {
  const CivilTime t = ToCivil(utc);
  if (t.year < 2000 || t.year > 2031) return std::nullopt;
  const auto field = [](int value, int shift) { return static_cast<std::uint32_t>(value) << shift; };
  return field(t.year - 2000, 26) | field(t.month, 22) | field(t.day, 17) | field(t.hour, 12) |
         field(t.minute, 6) | field(t.second, 0);
}

std::optional<Millis> DecodePackedTime(std::uint32_t packed) {
  const auto field = [packed](int shift, std::uint32_t mask) {
    return static_cast<int>(packed >> shift & mask);
  };
  const CivilTime time{2000 + field(26, 31), field(22, 15), field(17, 31),
                       field(12, 31),        field(6, 63),  field(0, 63)};
  if (!IsPossible(time)) return std::nullopt;
  return ToMillis(time);
}

}  // namespace pallomir
