#include "station/wire/data_request.h"

#include <algorithm>
#include <charconv>

namespace pallomir::station {
namespace {

constexpr std::string_view kTimePattern = "dddd-dd-dd dd:dd:dd";

int Digits(std::string_view text, std::size_t position, std::size_t count) {
  int value = 0;
  std::from_chars(text.data() + position, text.data() + position + count, value);
  return value;
}

std::optional<Millis> ParseTime(std::string_view text) {
  const bool fits = std::ranges::equal(text, kTimePattern, [](char c, char pattern) {
    return pattern == 'd' ? c >= '0' && c <= '9' : c == pattern;
  });
  if (!fits) return std::nullopt;
  const CivilTime time{Digits(text, 0, 4),  Digits(text, 5, 2),  Digits(text, 8, 2),
                       Digits(text, 11, 2), Digits(text, 14, 2), Digits(text, 17, 2)};
  if (!IsPossible(time)) return std::nullopt;
  return ToMillis(time);
}

std::optional<std::vector<std::string>> ParseUnitIds(std::string_view text) {
  if (text.empty() || text.size() % kUnitIdSize != 0 || text.size() / kUnitIdSize > kMaxUnitsPerRequest)
    return std::nullopt;
  std::vector<std::string> unitIds;
  for (; !text.empty(); text.remove_prefix(kUnitIdSize)) {
    const std::string_view id = text.substr(0, kUnitIdSize);
    if (!IsUnitId(id)) return std::nullopt;
    if (std::ranges::find(unitIds, id) == unitIds.end()) unitIds.emplace_back(id);
  }
  return unitIds;
}

}  // namespace

std::optional<DataRequest> ParseDataRequest(std::string_view text) {
  constexpr std::size_t kTail = 1 + kTimePattern.size() + 1 + kTimePattern.size() + kDataRequestEnd.size();
  if (text.size() < kTail || !text.ends_with(kDataRequestEnd)) return std::nullopt;
  const std::string_view tail = text.substr(text.size() - kTail);
  const std::size_t second = 1 + kTimePattern.size();
  if (tail[0] != '~' || tail[second] != '~') return std::nullopt;
  const auto unitIds = ParseUnitIds(text.substr(0, text.size() - kTail));
  const auto from = ParseTime(tail.substr(1, kTimePattern.size()));
  const auto until = ParseTime(tail.substr(second + 1, kTimePattern.size()));
  if (!unitIds || !from || !until) return std::nullopt;
  return DataRequest{*unitIds, {*from, *until}};
}

}  // namespace pallomir::station
