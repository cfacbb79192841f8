#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/civil_time.h"

namespace pallomir {

/// A tracked device.
struct MobileUnit {
  bool enabled = false;
  std::string id;           ///< 12 hexadecimal digits, upper case; as stored, so it may be malformed
  std::string description;  ///< no "~"
  bool operator==(const MobileUnit&) const = default;
};

/// At most this many records are read from a stored list.
inline constexpr std::size_t kMaxMobileUnits = 9999;

/// Reads a stored list: per unit "X" (enabled) or "-", the 12-character ID, the description, "~". What has no
/// "~" behind it is left out; of a record shorter than flag and ID the missing part is empty.
std::vector<MobileUnit> ParseMobileUnits(std::string_view stored);

/// One record without its "~".
MobileUnit ParseMobileUnit(std::string_view record);
std::string EncodeMobileUnit(const MobileUnit& unit);

std::string EncodeMobileUnits(const std::vector<MobileUnit>& units);

/// The stored list of the nine demo units.
std::string DemoMobileUnits();

/// The books that all rooms keep per unit. i is a unit's position in the list, k its position among the
/// enabled units; both count from 1. Of two enabled units with one ID the first receives the data.
struct UnitBook {
  std::size_t definedCount = 0;
  std::size_t enabledCount = 0;
  std::vector<std::size_t> listToEnabled{0};  ///< by i; 0 for a disabled unit
  std::vector<std::size_t> enabledToList{0};  ///< by k
  std::vector<std::string> descriptions{""};  ///< by k
  std::map<std::string, std::size_t, std::less<>> unitById;
  std::string requestText = "D";  ///< "D" and the IDs of the enabled units, in list order

  /// k of the enabled unit with this ID, or 0.
  std::size_t EnabledPositionOf(std::string_view id) const;
};

UnitBook EnumerateUnits(const std::vector<MobileUnit>& units);

/// Colour of the enabled unit k: 0xRRGGBB, four in turn.
std::uint32_t UnitColour(std::size_t k);

}  // namespace pallomir
