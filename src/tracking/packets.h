#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "base/bytes.h"

namespace pallomir {

/// A packet of the data stream, all integers big-endian:
///
///     0..3    check code of the payload
///     4..7    payload length L
///     8..19   unit ID, 12 characters (the payload begins here)
///     20..    (L - 12) / 14 records, newest first
///
/// A record:
///
///     0..3 packed time   4..7 latitude   8..11 longitude   12..13 status word
///
/// Latitude and longitude are signed, in 1/600000 degree.
inline constexpr std::size_t kPacketHeaderSize = 8;
inline constexpr std::size_t kUnitIdSize = 12;
inline constexpr std::size_t kRecordSize = 14;

/// The largest datagram, and how many units a locator request of that size names behind its check code and
/// its letter.
inline constexpr std::size_t kLargestDatagram = 65'507;
inline constexpr std::size_t kMostUnitsPerRequest = (kLargestDatagram - 6 - 1) / kUnitIdSize;
static_assert(kMostUnitsPerRequest == 5458);

/// A sender puts at most this many records into a packet; it is also what a data file holds.
inline constexpr std::size_t kRecordsPerPacket = 720;

/// The longest payload that a reader takes for one: 24 million records, some nine months of one a second. A
/// longer length is garbage and must not make the reader wait for (or store) gigabytes.
inline constexpr std::size_t kMaxPayloadSize = kUnitIdSize + 24'000'000 * kRecordSize;

/// A record as it travels, before it is projected.
struct WireRecord {
  std::uint32_t time = 0;
  std::int32_t latitude = 0;
  std::int32_t longitude = 0;
  std::uint16_t status = 0;
  bool operator==(const WireRecord&) const = default;
};

/// `record` starts at `position`; the caller has checked that its 14 bytes are there.
inline WireRecord DecodeRecord(ByteView bytes, std::size_t position) {
  return {ReadBigEndian32(bytes, position), ReadBigEndianSigned32(bytes, position + 4),
          ReadBigEndianSigned32(bytes, position + 8), ReadBigEndian16(bytes, position + 12)};
}

void AppendRecord(Bytes& out, const WireRecord& record);

/// A whole packet of the unit with the 12-character ID; `oldestFirst` is turned round for the wire.
Bytes EncodePacket(std::string_view unitId, std::span<const WireRecord> oldestFirst);

/// Whether `text` is a unit ID: exactly 12 of 0-9 and A-F.
bool IsUnitId(std::string_view text);

}  // namespace pallomir
