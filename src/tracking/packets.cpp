#include "tracking/packets.h"

#include <algorithm>

#include "base/check_code.h"

namespace pallomir {

void AppendRecord(Bytes& out, const WireRecord& record) {
  AppendBigEndian32(out, record.time);
  AppendBigEndian32(out, static_cast<std::uint32_t>(record.latitude));
  AppendBigEndian32(out, static_cast<std::uint32_t>(record.longitude));
  AppendBigEndian16(out, record.status);
}

Bytes EncodePacket(std::string_view unitId, std::span<const WireRecord> oldestFirst) {
  Bytes payload;
  payload.reserve(unitId.size() + oldestFirst.size() * kRecordSize);
  Append(payload, AsBytes(unitId));
  for (auto record = oldestFirst.rbegin(); record != oldestFirst.rend(); ++record)
    AppendRecord(payload, *record);
  Bytes packet = LongCheckForm(payload);
  Append(packet, payload);
  return packet;
}

bool IsUnitId(std::string_view text) {
  return text.size() == kUnitIdSize && std::all_of(text.begin(), text.end(), [](char c) {
           return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F');
         });
}

}  // namespace pallomir
