#pragma once

#include "base/packed_time.h"
#include "tracking/packets.h"

namespace pallomir {

/// A data file holds positions of one unit: at most 720 records of 14 bytes, oldest first, and nothing else.
/// A record, with all integers big-endian:
///
///     0..3 packed time   4 status, high byte   5..8 latitude   9..12 longitude   13 status, low byte
///
/// Latitude and longitude are signed, in 1/600000 degree. The time's flag means nothing.
inline constexpr std::size_t kMaxDataFileSize = kRecordsPerPacket * kRecordSize;

/// Whether it can be the size of a data file, in bytes; 0 can.
constexpr bool IsDataFileSize(std::size_t size) {
  return size <= kMaxDataFileSize && size % kRecordSize == 0;
}

// The fields of the record that starts at `position`; the caller has checked that its 14 bytes are there.
inline std::uint32_t FileRecordTime(ByteView file, std::size_t position) {
  return WithoutFlag(ReadBigEndian32(file, position));
}
inline std::int32_t FileRecordLatitude(ByteView file, std::size_t position) {
  return ReadBigEndianSigned32(file, position + 5);
}
inline std::int32_t FileRecordLongitude(ByteView file, std::size_t position) {
  return ReadBigEndianSigned32(file, position + 9);
}

/// The whole record, the time's flag clear.
WireRecord DecodeFileRecord(ByteView file, std::size_t position);

void AppendFileRecord(Bytes& out, const WireRecord& record);

}  // namespace pallomir
