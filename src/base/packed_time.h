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

/// Whether the fields name a date and time of day that exist (no month 13, 30 February, hour 24), ignoring
/// the flag.
bool IsPossiblePackedTime(std::uint32_t packed);

/// The packed form of a UTC moment, to the second; nothing outside the years 2000 to 2031.
std::optional<std::uint32_t> EncodePackedTime(Millis utc);

/// The UTC moment, ignoring the flag; nothing where the fields name no possible date.
std::optional<Millis> DecodePackedTime(std::uint32_t packed);

}  // namespace pallomir
