#include "reports/data_file.h"

namespace pallomir {

WireRecord DecodeFileRecord(ByteView file, std::size_t position) {
  return {FileRecordTime(file, position), FileRecordLatitude(file, position),
          FileRecordLongitude(file, position),
          static_cast<std::uint16_t>(file[position + 4] << 8 | file[position + 13])};
}

void AppendFileRecord(Bytes& out, const WireRecord& record) {
  AppendBigEndian32(out, record.time);
  out.push_back(static_cast<std::uint8_t>(record.status >> 8));
  AppendBigEndian32(out, static_cast<std::uint32_t>(record.latitude));
  AppendBigEndian32(out, static_cast<std::uint32_t>(record.longitude));
  out.push_back(static_cast<std::uint8_t>(record.status));
}

}  // namespace pallomir
