#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "fuzz_input.h"
#include "oracles/literal_visits.h"
#include "reports/visit_search.h"

// A unit's folder of three files of any bytes: the search finds what the rule written down finds, and ends as
// it does.
//
// Flags: -max_len=300

namespace pallomir::fuzz {
namespace {

namespace fs = std::filesystem;

const std::string kUnit = "00000000000A";

// One folder a process, in memory where there is such a place.
const fs::path& Folder() {
  static const fs::path folder = [] {
    std::error_code error;
    const fs::path base = fs::is_directory("/dev/shm", error) ? "/dev/shm" : fs::temp_directory_path();
    fs::path made = base / ("pallomir-fuzz-" + std::to_string(::getpid()));
    fs::create_directories(made / kUnit);
    std::atexit([] {
      std::error_code ignored;
      fs::remove_all(Folder(), ignored);
    });
    return made;
  }();
  return folder;
}

void CheckSearch(FuzzInput input) {
  const std::size_t limit = 1u + input.Byte() % 8;
  const bool hasSpan = input.Byte() % 2 != 0;
  const std::uint32_t first = hasSpan ? static_cast<std::uint32_t>(input.Word()) << 15 : 0;
  const std::uint32_t last = hasSpan ? static_cast<std::uint32_t>(input.Word()) << 15 | 0x7FFF : 0x7FFFFFFF;
  const std::size_t sizes[] = {input.Byte(), input.Byte(), ~std::size_t{0}};
  for (std::size_t i = 0; i < std::size(sizes); ++i) {
    const ByteView content = input.Take(sizes[i]);
    std::ofstream(Folder() / kUnit / std::to_string(i), std::ios::binary) << AsText(content);
  }
  const VisitQuery query{{kUnit}, SearchArea::Rectangle(-90, 90, -7, 1500), {first, last}, limit};
  const oracles::LiteralSearch literal = oracles::LiteralVisits(Folder(), query);
  VisitSearch search(Folder(), query);
  while (search.Step()) {
  }
  const std::vector<Visit> visits = search.Visits();
  PALLOMIR_DEMAND(visits.size() == literal.visits.size());
  for (std::size_t i = 0; i < visits.size(); ++i) {
    PALLOMIR_DEMAND(visits[i].entry == literal.visits[i].entry && visits[i].exit == literal.visits[i].exit);
    PALLOMIR_DEMAND(visits[i].records == literal.visits[i].records);
    PALLOMIR_DEMAND(MomentOf(visits[i].entry) <= MomentOf(0x7FFFFFFF));
  }
  const std::string code = "Error " + std::to_string(literal.error) + ":";
  PALLOMIR_DEMAND(literal.error == 0 ? search.Problem().empty() : search.Problem().starts_with(code));
}

}  // namespace
}  // namespace pallomir::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  pallomir::fuzz::CheckSearch({data, size});
  return 0;
}
