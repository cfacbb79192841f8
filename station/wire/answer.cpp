#include "station/wire/answer.h"

#include <algorithm>
#include <cassert>
#include <limits>

#include "base/packed_time.h"
#include "tracking/packets.h"

namespace pallomir::station {
namespace {

Millis TimeOf(const WireRecord& record, Millis otherwise) {
  return DecodePackedTime(record.time).value_or(otherwise);
}

}  // namespace

Answer::Answer(PositionSource& source, const DataRequest& request)
    : source_(source), until_(request.window.until) {
  for (const std::string& id : request.unitIds) units_.push_back({id, request.window.from, {}});
  LookForNew();
}

void Answer::LookForNew() {
  for (UnitProgress& unit : units_)
    if (!unit.first) FindFirst(unit);
}

void Answer::FindFirst(UnitProgress& unit) {
  const auto records = source_.Read(unit.id, {unit.next, until_}, 1);
  unit.first = records.empty() ? std::nullopt : DecodePackedTime(records.front().time);
}

bool Answer::HasMore() const {
  return std::ranges::any_of(units_, [](const UnitProgress& unit) { return unit.first.has_value(); });
}

Bytes Answer::NextPacket() {
  while (HasMore()) {
    UnitProgress& unit = *std::ranges::min_element(units_, {}, [](const UnitProgress& u) {
      return u.first.value_or(std::numeric_limits<Millis>::max());
    });
    const auto records = source_.Read(unit.id, {*unit.first, until_}, kRecordsPerPacket);
    if (records.empty()) {  // what the source had a moment ago is gone
      unit.first.reset();
      continue;
    }
    assert(records.size() <= kRecordsPerPacket);
    assert(IsStrictlyAscending(records));
    unit.next = TimeOf(records.back(), *unit.first) + kSecond;
    assert(unit.next > *unit.first);
    FindFirst(unit);
    return EncodePacket(unit.id, records);
  }
  return {};
}

}  // namespace pallomir::station
