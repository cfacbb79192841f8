#include <algorithm>
#include <set>

#include "base/check_code.h"
#include "fuzz_input.h"
#include "station/wire/answer.h"
#include "station/wire/data_request.h"
#include "station/wire/write_plan.h"
#include "tracking/server_connection.h"

// What a stranger can send to the station: a data request, a locator request, and how an answer to the first
// one is cut into writes.
//
// Flags: -max_len=256

namespace pallomir::fuzz {
namespace {

void CheckDataRequest(std::string_view text) {
  const auto request = station::ParseDataRequest(text);
  if (!request) return;
  PALLOMIR_DEMAND(text.size() <= station::kMaxDataRequestSize);
  PALLOMIR_DEMAND(!request->unitIds.empty() && request->unitIds.size() <= station::kMaxUnitsPerRequest);
  const std::set<std::string> distinct(request->unitIds.begin(), request->unitIds.end());
  PALLOMIR_DEMAND(distinct.size() == request->unitIds.size());
  std::string ids;
  for (const std::string& id : request->unitIds) {
    PALLOMIR_DEMAND(IsUnitId(id));
    ids += id;
  }
  const std::string again = DataRequestText(ids, request->window.from, request->window.until);
  // Only repeated IDs are not said again.
  PALLOMIR_DEMAND(again.size() == text.size() ? again == text : again.size() < text.size());
  const auto second = station::ParseDataRequest(again);
  PALLOMIR_DEMAND(second && second->unitIds == request->unitIds &&
                  second->window.from == request->window.from &&
                  second->window.until == request->window.until);
  if (const auto packed = station::PackWindow(request->window))
    PALLOMIR_DEMAND(packed->first <= packed->last);
}

void CheckLocatorRequest(ByteView rest) {
  Bytes datagram = ShortCheckForm(rest);
  Append(datagram, rest);
  const auto unitIds = station::ParseLocatorRequest(datagram);
  if (!unitIds) return;
  PALLOMIR_DEMAND(unitIds->size() <= station::kMaxUnitsPerRequest);
  PALLOMIR_DEMAND(station::LocatorRequest(*unitIds) == datagram);
}

// However the system takes the writes: all bytes go out, and until the last one a reader never stands at the
// end of a packet or in the eight bytes behind it.
void CheckWritePlan(FuzzInput input) {
  std::vector<std::size_t> sizes;
  for (int count = 1 + input.Byte() % 4; count > 0; --count)
    sizes.push_back(kPacketHeaderSize + kUnitIdSize + kRecordSize * (1 + input.Byte() % 20u));
  std::size_t total = 0;
  for (const std::size_t size : sizes) total += size;
  const std::size_t limit = 1 + input.Byte();
  for (std::size_t written = 0, first = 0; written < total;) {
    const std::size_t count = station::PlanWrite(
        std::span(sizes).subspan(first),
        written -
            [&] {
              std::size_t before = 0;
              for (std::size_t i = 0; i < first; ++i) before += sizes[i];
              return before;
            }(),
        true, limit);
    PALLOMIR_DEMAND(count > 0 && count <= total - written);
    PALLOMIR_DEMAND(written + count == total || count <= limit + station::kForbiddenBehindPacket + 1);
    written += count;
    std::size_t end = 0;
    first = 0;
    while (first < sizes.size() && end + sizes[first] <= written) end += sizes[first++];
    PALLOMIR_DEMAND(written == total || first == 0 || written > end + station::kForbiddenBehindPacket);
  }
}

}  // namespace
}  // namespace pallomir::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace pallomir;
  const ByteView input(data, size);
  fuzz::CheckDataRequest(AsText(input));
  station::ParseLocatorRequest(input);
  fuzz::CheckLocatorRequest(input);
  fuzz::CheckWritePlan({data, size});
  return 0;
}
