#pragma once

#include <gmock/gmock.h>

#include "fakes/client_harness.h"

namespace pallomir {

using fakes::ClientHarness;
using fakes::Record;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

inline constexpr char kTwoUnits[] = "X0123456789ABFirst~-0123456789ACSecond~";
inline constexpr char kFirstUnit[] = "0123456789AB";

inline Bytes PacketOf(std::vector<WireRecord> oldestFirst, const char* unit = kFirstUnit) {
  return EncodePacket(unit, oldestFirst);
}

/// The whole client on fake ports.
class ClientTest : public testing::Test, public ClientHarness {
 protected:
  void StartStreaming() {
    UseUnits(kTwoUnits);
    client->Load();
    Connect();
  }
  void ReportMapReady(int zoom = 12) {
    Command("S1");
    Command("M40.620000,-75.370000");
    Command("Z" + std::to_string(zoom));
  }
};

}  // namespace pallomir
