#include "base/packed_time.h"

#include <array>
#include <chrono>

namespace pallomir {
namespace {

// Bit d of element year x 16 + month stands for day d: set where the calendar has it.
constexpr std::array<std::uint32_t, 32 * 16> kPossibleDays = [] {
  using namespace std::chrono;
  std::array<std::uint32_t, 32 * 16> days{};
  for (unsigned m = 1; m <= 12; ++m) {
    for (int y = 0; y < 32; ++y) {
      const auto last = static_cast<unsigned>((year{2000 + y} / month{m} / std::chrono::last).day());
      days[static_cast<std::size_t>(y) * 16 + m] = (2u << last) - 2;
    }
  }
  return days;
}();

}  // namespace

bool IsPossiblePackedTime(std::uint32_t packed) {
  return HasPossibleTimeOfDay(packed) && (kPossibleDays[packed >> 22 & 0x1FF] >> (packed >> 17 & 31) & 1);
}

std::optional<std::uint32_t> EncodePackedTime(Millis utc) {
  const CivilTime t = ToCivil(utc);
  if (t.year < 2000 || t.year > 2031) return std::nullopt;
  const auto field = [](int value, int shift) { return static_cast<std::uint32_t>(value) << shift; };
  return field(t.year - 2000, 26) | field(t.month, 22) | field(t.day, 17) | field(t.hour, 12) |
         field(t.minute, 6) | field(t.second, 0);
}

std::optional<Millis> DecodePackedTime(std::uint32_t packed) {
  if (!IsPossiblePackedTime(packed)) return std::nullopt;
  const auto field = [packed](int shift, std::uint32_t mask) {
    return static_cast<int>(packed >> shift & mask);
  };
  return ToMillis(CivilTime{2000 + field(26, 31), field(22, 15), field(17, 31), field(12, 31), field(6, 63),
                            field(0, 63)});
}

}  // namespace pallomir
