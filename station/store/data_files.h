#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <system_error>
#include <vector>

#include "base/bytes.h"
#include "tracking/packets.h"

namespace pallomir::station {

/// A data file: records of 14 bytes and nothing else, at most kRecordsPerPacket of them, strictly ascending
/// in time. A record, all integers big-endian:
///
///     0..3 packed time   4 status, high byte   5..8 latitude   9..12 longitude   13 status, low byte
inline constexpr std::size_t kMaxDataFileSize = kRecordsPerPacket * kRecordSize;

Bytes EncodeDataFile(std::span<const WireRecord> records);

/// What a file holds, or why it is not a data file.
struct DataFileContent {
  std::vector<WireRecord> records;  ///< flags clear
  std::string problem;              ///< empty when all is well; a torn tail is named and left out
  std::error_code unread;           ///< why nobody knows what the file holds; such a file may well be one
};
DataFileContent DecodeDataFile(ByteView bytes);

/// The same from a file.
DataFileContent ReadDataFile(const std::filesystem::path& file);

/// The name of the file whose first record has this time: names ascend as times do.
std::string DataFileName(std::uint32_t packedTime);

}  // namespace pallomir::station
