#include "station/store/data_files.h"

#include <cstdio>

#include "base/packed_time.h"
#include "base/whole_file.h"

namespace pallomir::station {
namespace {

constexpr std::string_view kTooLong = "is longer than a data file";

}  // namespace

Bytes EncodeDataFile(std::span<const WireRecord> records) {
  Bytes bytes;
  bytes.reserve(records.size() * kRecordSize);
  for (const WireRecord& record : records) AppendFileRecord(bytes, record);
  return bytes;
}

DataFileContent DecodeDataFile(ByteView bytes) {
  if (bytes.size() > kMaxDataFileSize) return {{}, std::string(kTooLong), {}};
  DataFileContent content;
  std::uint32_t latest = 0;
  for (std::size_t position = 0; position + kRecordSize <= bytes.size(); position += kRecordSize) {
    const WireRecord record = DecodeFileRecord(bytes, position);
    if (!DecodePackedTime(record.time) || record.time <= latest)
      return {{}, "has times that do not ascend at byte " + std::to_string(position), {}};
    latest = record.time;
    content.records.push_back(record);
  }
  if (const std::size_t tail = bytes.size() % kRecordSize; tail != 0)
    content.problem = "ends in a record of " + std::to_string(tail) + " bytes, which is left out";
  else if (content.records.empty())
    content.problem = "has no record";
  return content;
}

DataFileContent ReadDataFile(const std::filesystem::path& file) {
  std::error_code error;
  const auto bytes = ReadWholeFile(file, kMaxDataFileSize, error);
  if (error == std::errc::file_too_large) return {{}, std::string(kTooLong), {}};
  if (!bytes) return {{}, "can't be read: " + error.message(), error};
  return DecodeDataFile(AsBytes(*bytes));
}

std::string DataFileName(std::uint32_t packedTime) {
  const CivilTime t = ToCivil(DecodePackedTime(packedTime).value_or(0));
  char name[64];
  std::snprintf(name, sizeof name, "%04d%02d%02d-%02d%02d%02d.dat", t.year, t.month, t.day, t.hour, t.minute,
                t.second);
  return name;
}

}  // namespace pallomir::station
