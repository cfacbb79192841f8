#pragma once

#include <span>
#include <string>

namespace pallomir {

/// A carrier of mobile phones: text messages reach a phone as mail to its number at the carrier's gateway.
struct Carrier {
  char accessKey;
  const char* name;
  const char* gateway;  ///< domain
};

/// Stored as the place from 1.
std::span<const Carrier> Carriers();

/// Place of the entry that asks for a carrier of the user's own, and of that carrier.
inline constexpr int kCustomCarrierEntry = 98;
inline constexpr int kCustomCarrier = 99;

}  // namespace pallomir
