#include "station/wire/locator_messages.h"

#include <algorithm>

#include "base/check_code.h"
#include "base/number_format.h"
#include "tracking/packets.h"

namespace pallomir::station {
namespace {

Bytes WithCheckForm(std::string_view text) {
  Bytes message = ShortCheckForm(AsBytes(text));
  Append(message, AsBytes(text));
  return message;
}

}  // namespace

std::optional<std::vector<std::string>> ParseLocatorRequest(ByteView datagram) {
  if (datagram.size() < kShortCheckSize + 1) return std::nullopt;
  const ByteView rest = datagram.subspan(kShortCheckSize);
  if (!std::ranges::equal(ShortCheckForm(rest), datagram.first(kShortCheckSize))) return std::nullopt;
  std::string_view text = AsText(rest);
  if (text.front() != 'D') return std::nullopt;
  text.remove_prefix(1);
  if (text.size() % kUnitIdSize != 0 || text.size() / kUnitIdSize > kMaxUnitsPerRequest) return std::nullopt;

  std::vector<std::string> unitIds;
  for (; !text.empty(); text.remove_prefix(kUnitIdSize)) {
    unitIds.emplace_back(text.substr(0, kUnitIdSize));
    if (!IsUnitId(unitIds.back())) return std::nullopt;
  }
  return unitIds;
}

Bytes LocatorRequest(const std::vector<std::string>& unitIds) {
  std::string text = "D";
  for (const std::string& id : unitIds) text += id;
  return WithCheckForm(text);
}

Bytes LocatorReply(std::uint32_t address, std::uint16_t port) {
  return WithCheckForm(HexDigits(address, 8) + HexDigits(port, 4));
}

Bytes EmptyLocatorReply() { return WithCheckForm(""); }

}  // namespace pallomir::station
