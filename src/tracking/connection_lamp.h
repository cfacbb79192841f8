#pragma once

#include <cstddef>
#include <string>

#include "tracking/server_connection.h"

namespace pallomir {

enum class LampColour { kQuiet, kGreen, kAmber, kRed };

/// What the lamp in the caption line shows.
struct LampMessage {
  LampColour colour = LampColour::kQuiet;
  std::string tip;
  std::string word;  ///< beside the lamp, where the user has to act; else empty
};

struct LampFacts {
  ServerConnection::State connection = ServerConnection::State::kIdle;
  bool isAnyUnitEnabled = false;
  bool waitsForFit = false;  ///< data has come that the user's fit will take in
  bool isNotDrawn = false;   ///< points are not on the map yet
  std::size_t pointCount = 0;
  std::size_t datedLater = 0;  ///< points of the future
  std::string note = {};       ///< what else there is to say, behind all the rest
  int retryIn = 0;             ///< seconds until a lost connection is tried again by itself; 0: it is not
  std::string trouble = {};    ///< why it was lost
};

/// Tells what is unseen otherwise.
LampMessage LampFor(const LampFacts& facts);

}  // namespace pallomir
