#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <system_error>
#include <vector>

#include "base/bytes.h"
#include "reports/data_file.h"

namespace pallomir::station {

// What the station itself writes, and what it streams, is stricter than what a data file may be: 1 to
// kRecordsPerPacket records with possible dates, strictly ascending in time.

/// The content of a file with these records, which must be as the station writes them.
Bytes EncodeDataFile(std::span<const WireRecord> records);

/// What a file holds, or why it isn't a data file.
struct DataFileContent {
  std::vector<WireRecord> records;  ///< flags clear
  std::string problem;              ///< empty if there is none; a record cut short is left out and said here
  std::error_code unread;           ///< why the file couldn't be read; it may be a data file or not
};
DataFileContent DecodeDataFile(ByteView bytes);

/// Reads and decodes a file. Takes little memory, whatever the file's size.
DataFileContent ReadDataFile(const std::filesystem::path& file);

/// The name for a file whose first record has this time, "20261122-120000.dat". Names sort as times do.
std::string DataFileName(std::uint32_t packedTime);

}  // namespace pallomir::station
