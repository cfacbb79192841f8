#include <algorithm>
#include <vector>

#include "base/packed_time.h"
#include "fuzz_input.h"
#include "station/store/data_files.h"
#include "station/store/position_source.h"

// The station's data files: what is read ascends, and written again is the same file.
//
// Flags: -max_len=112

namespace pallomir::fuzz {
namespace {

Bytes WithoutFlags(ByteView file) {
  Bytes bytes(file.begin(), file.end());
  for (std::size_t at = 0; at + kRecordSize <= bytes.size(); at += kRecordSize) bytes[at] &= 0x7F;
  return bytes;
}

void CheckFile(ByteView file) {
  const station::DataFileContent content = station::DecodeDataFile(file);
  const auto& records = content.records;
  const std::size_t whole = file.size() / kRecordSize;
  PALLOMIR_DEMAND(records.size() == whole || records.empty());
  PALLOMIR_DEMAND(!content.problem.empty() || (!records.empty() && file.size() % kRecordSize == 0));
  PALLOMIR_DEMAND(std::ranges::is_sorted(records, std::ranges::less_equal{}, &WireRecord::time));
  if (records.empty()) return;

  const Bytes again = station::EncodeDataFile(records);
  PALLOMIR_DEMAND(again == WithoutFlags(file.first(whole * kRecordSize)));
  PALLOMIR_DEMAND(station::DecodeDataFile(again).records == records);
  PALLOMIR_DEMAND(station::DataFileName(records.front().time).size() == sizeof "20261122-120000.dat" - 1);
  PALLOMIR_DEMAND(records.size() == 1 ||
                  station::DataFileName(records[0].time) < station::DataFileName(records[1].time));

  // A window from one record to another holds just those.
  const station::PackedWindow window{records[whole / 3].time, records[whole - 1].time};
  PALLOMIR_DEMAND(station::RecordsInside(records, window).size() == whole - whole / 3);
}

// A file whose times step forward by what the input says.
Bytes Ascending(FuzzInput input) {
  Millis time = ToMillis({2026, 11, 22}) + input.Word() * kHour;
  Bytes file;
  while (!input.IsEmpty()) {
    time += (input.Word() + 1) * kSecond;
    AppendBigEndian32(file, EncodePackedTime(time).value_or(0));
    Bytes rest(kRecordSize - 4);
    const ByteView taken = input.Take(rest.size());
    std::ranges::copy(taken, rest.begin());
    Append(file, rest);
  }
  return file;
}

}  // namespace
}  // namespace pallomir::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  pallomir::fuzz::CheckFile({data, size});
  pallomir::fuzz::CheckFile(pallomir::fuzz::Ascending({data, size}));
  return 0;
}
