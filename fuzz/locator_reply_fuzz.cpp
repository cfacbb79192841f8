#include <algorithm>
#include <cstdio>

#include "base/check_code.h"
#include "fuzz_input.h"
#include "station/wire/locator_messages.h"
#include "tracking/server_connection.h"

// The datagram that names the Base Server: as it came, and behind a right check code.
//
// Flags: -max_len=64

namespace pallomir::fuzz {
namespace {

void CheckReply(ByteView datagram, bool isCodeRight) {
  using Kind = LocatorReply::Kind;
  const LocatorReply reply = ParseLocatorReply(datagram);
  const bool isWellSized = datagram.size() >= 6 && (datagram.size() - 6) % 12 == 0;
  PALLOMIR_DEMAND((reply.kind == Kind::kWrongLength) == !isWellSized);
  PALLOMIR_DEMAND(reply.kind != Kind::kNoServer || datagram.size() == 6);
  PALLOMIR_DEMAND(!isCodeRight || reply.expectedCheck.empty());
  PALLOMIR_DEMAND(reply.kind != Kind::kCheckMismatch || reply.expectedCheck.size() == kShortCheckSize);
  PALLOMIR_DEMAND((reply.kind == Kind::kServer) == !reply.server.empty());
  if (reply.kind != Kind::kServer) return;

  unsigned a = 0, b = 0, c = 0, d = 0;
  char beyond = 0;
  const int fields = std::sscanf(reply.server.c_str(), "%3u.%3u.%3u.%3u%c", &a, &b, &c, &d, &beyond);
  PALLOMIR_DEMAND(fields == 4 && a < 256 && b < 256 && c < 256 && d < 256);
  // What the other side would send for this server is read as the same.
  const Bytes again = station::LocatorReply(a << 24 | b << 16 | c << 8 | d, 2435);
  const LocatorReply second = ParseLocatorReply(again);
  PALLOMIR_DEMAND(second.kind == Kind::kServer && second.server == reply.server);
}

}  // namespace
}  // namespace pallomir::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace pallomir;
  const ByteView input(data, size);
  fuzz::CheckReply(input, false);
  Bytes datagram = ShortCheckForm(input);
  Append(datagram, input);
  fuzz::CheckReply(datagram, true);
  return 0;
}
