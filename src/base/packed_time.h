#pragma once

#include <cstdint>
#include <optional>

#include "base/civil_time.h"

namespace pallomir {

/// Packed time, the form of times in records and data files: one 32-bit integer whose order is time order.
///
///     31     30..26      25..22  21..17  16..12  11..6    5..0
///     flag   year-2000   month   day     hour    minute   second
///
/// The time is UTC. The flag is carried unchanged and means nothing here.
inline constexpr std::uint32_t kPackedTimeFlag = 0x80000000u;

constexpr std::uint32_t WithoutFlag(std::uint32_t packed) { return packed & ~kPackedTimeFlag; }

/// Whether hour, minute and second are below 24, 60 and 60. An hour from 24 on has its upper two bits set, a
/// minute or second from 60 on its upper four: one added to their lowest then carries out of the field.
constexpr bool HasPossibleTimeOfDay(std::uint32_t packed) {
  constexpr std::uint32_t kUpperBits = 0x18000 | 0xF00 | 0x3C;
  constexpr std::uint32_t kLowest = 0x8000 | 0x100 | 0x4;
  constexpr std::uint32_t kCarries = 0x20000 | 0x1000 | 0x40;
  return (((packed & kUpperBits) + kLowest) & kCarries) == 0;
}

/// Whether two packed times lie on the same day.
constexpr bool IsSameDay(std::uint32_t a, std::uint32_t b) { return (WithoutFlag(a ^ b) >> 17) == 0; }

/// Whether the fields name a date and time of day that exist (no month 13, 30 February, hour 24), ignoring
/// the flag.
bool IsPossiblePackedTime(std::uint32_t packed);

/// The packed form of a UTC moment, to the second; nothing outside the years 2000 to 2031.
std::optional<std::uint32_t> EncodePackedTime(Millis utc);

/// The UTC moment, ignoring the flag; nothing where the fields name no possible date.
std::optional<Millis> DecodePackedTime(std::uint32_t packed);

}  // namespace pallomir
