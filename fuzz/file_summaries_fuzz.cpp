#include "base/check_code.h"
#include "fuzz_input.h"
#include "reports/file_summaries.h"

// The summaries of data files: any bytes, as they are and with the mark and the code that they need. What is
// read and written again reads the same.
//
// Flags: -max_len=512

namespace pallomir::fuzz {
namespace {

void CheckText(const std::string& text) {
  const FileSummaries summaries = DecodeSummaries(text);
  PALLOMIR_DEMAND(DecodeSummaries(EncodeSummaries(summaries)) == summaries);
  for (const auto& [name, summary] : summaries) {
    PALLOMIR_DEMAND(IsDataFileSize(summary.stamp.size));
    PALLOMIR_DEMAND(summary.boxes.size() == (summary.RecordCount() + 31) / 32);
    PALLOMIR_DEMAND(name.size() < text.size());
  }
}

}  // namespace
}  // namespace pallomir::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace pallomir;
  const ByteView input(data, size);
  fuzz::CheckText(std::string(AsText(input)));
  const std::string nothing = EncodeSummaries({});
  const std::string mark = nothing.substr(0, nothing.size() - kLongCheckSize);
  const Bytes code = LongCheckForm(input);
  fuzz::CheckText(mark + std::string(AsText(code)) + std::string(AsText(input)));
  return 0;
}
