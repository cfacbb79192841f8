#include "station/store/unit_store.h"

namespace pallomir::station {
namespace {

constexpr std::size_t kMaxDescriptionSize = 80;

}  // namespace

std::string CleanDescription(std::string_view text) {
  std::string clean;
  for (const char c : text) {
    const auto code = static_cast<unsigned char>(c);
    if (code >= 0x20 && code != 0x7F && c != '~' && c != '"') clean += c;
  }
  clean.erase(0, clean.find_first_not_of(' '));
  if (clean.size() > kMaxDescriptionSize) {
    std::size_t end = kMaxDescriptionSize;
    while (end > 0 && (static_cast<unsigned char>(clean[end]) & 0xC0) == 0x80) --end;
    clean.resize(end);
  }
  clean.erase(clean.find_last_not_of(' ') + 1);
  return clean;
}

}  // namespace pallomir::station
