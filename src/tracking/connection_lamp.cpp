#include "tracking/connection_lamp.h"

namespace pallomir {
namespace {

constexpr char kDataWaits[] = "New data waits: press F";
constexpr char kNotDrawn[] = "Not drawn yet: press F";

LampMessage ConnectionMessage(const LampFacts& facts) {
  using State = ServerConnection::State;
  if (facts.retryIn > 0) {
    const std::string again = "trying again in " + std::to_string(facts.retryIn) + " s";
    return {LampColour::kAmber, facts.trouble + "\nLive: " + again, "No connection: " + again};
  }
  switch (facts.connection) {
    case State::kLocating:
    case State::kProbing:
    case State::kConnecting:
      return {LampColour::kAmber, "Looking for the server", ""};
    case State::kClosedByServer:
      return {LampColour::kRed,
              "The server has closed the connection: no new data comes.\nPress R to load the data again.",
              "Closed by the server: press R"};
    case State::kReporting:
    case State::kClosed:
      return {LampColour::kQuiet, "Not connected", ""};
    case State::kIdle:
      return {LampColour::kQuiet, "Not connected: no data comes.\nPress R to try again.",
              "Not connected: press R"};
    case State::kStreaming:
      break;
  }
  if (facts.pointCount == 0) return {LampColour::kQuiet, "No data yet", ""};
  return {LampColour::kGreen, "Connected", ""};
}

// A connection that the user has to mend comes first, then what the user has to fetch.
LampMessage StateMessage(const LampFacts& facts) {
  if (!facts.isAnyUnitEnabled) return {LampColour::kQuiet, "No mobile units enabled", ""};
  LampMessage message = ConnectionMessage(facts);
  const char* fetch = facts.waitsForFit ? kDataWaits : facts.isNotDrawn ? kNotDrawn : nullptr;
  if (!fetch) return message;
  if (message.word.empty()) return {LampColour::kAmber, fetch, ""};
  message.tip += "\n" + std::string(fetch);
  return message;
}

}  // namespace

LampMessage LampFor(const LampFacts& facts) {
  LampMessage message = StateMessage(facts);
  if (facts.datedLater == 1) message.tip += "\n1 data point is dated later than now";
  if (facts.datedLater > 1)
    message.tip += "\n" + std::to_string(facts.datedLater) + " data points are dated later than now";
  if (!facts.note.empty()) message.tip += "\n" + facts.note;
  return message;
}

}  // namespace pallomir
