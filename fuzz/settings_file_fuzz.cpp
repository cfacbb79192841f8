#include <algorithm>
#include <string>

#include "fuzz_input.h"
#include "settings/settings_text.h"

// The settings file: any text is read, and what was stored is what is read back.
//
// Flags: -max_len=112

namespace pallomir::fuzz {
namespace {

std::string Written(const SettingsTable& table) {
  std::string text;
  for (const auto& entry : table.Entries()) text += SettingsLine(entry.key, entry.value) + "\r\n";
  return text;
}

void DemandSame(const SettingsTable& table, const ParsedSettings& again) {
  PALLOMIR_DEMAND(again.damagedLines == 0);
  PALLOMIR_DEMAND(
      std::ranges::equal(table.Entries(), again.table.Entries(),
                         [](const auto& a, const auto& b) { return a.key == b.key && a.value == b.value; }));
}

}  // namespace
}  // namespace pallomir::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace pallomir;
  const std::string_view text = AsText({data, size});

  const ParsedSettings parsed = ParseSettings(text);
  const auto lines = static_cast<std::size_t>(std::ranges::count(text, '\n')) + 1;
  PALLOMIR_DEMAND(parsed.damagedLines + parsed.table.Entries().size() <= lines);
  const std::string written = fuzz::Written(parsed.table);
  fuzz::DemandSame(parsed.table, ParseSettings(written));

  // A file that was cut anywhere loses its last line at most.
  const std::size_t cut = size == 0 ? 0 : data[0] * written.size() / 256;
  const ParsedSettings torn = ParseSettings(std::string_view(written).substr(0, cut));
  PALLOMIR_DEMAND(torn.damagedLines <= 1);

  // The input itself as keys and values.
  SettingsTable table;
  for (fuzz::FuzzInput input(data, size); !input.IsEmpty();) {
    const std::string_view key = AsText(input.Take(input.Byte() % 16));
    const std::string_view value = AsText(input.Take(input.Byte() % 64));
    table.Set(key, value);
    PALLOMIR_DEMAND(table.Find(key) && *table.Find(key) == value);
  }
  fuzz::DemandSame(table, ParseSettings(fuzz::Written(table)));
  return 0;
}
