#include "zones/zone_payload.h"

#include <cmath>

#include "base/number_format.h"

namespace pallomir {
namespace {

void AppendDegrees(std::string& payload, double degrees) {
  constexpr std::size_t kWidth = 11;
  const std::string text = FormatFixed(degrees, 3, 6);
  payload.append(kWidth - text.size(), ' ');
  payload += text;
}

// Takes the text up to the next "~"; nothing when there is none.
std::optional<std::string_view> TakeNumber(std::string_view& rest) {
  const std::size_t end = rest.find('~');
  if (end == std::string_view::npos) return std::nullopt;
  const std::string_view number = rest.substr(0, end);
  rest.remove_prefix(end + 1);
  return number;
}

std::optional<double> DegreesOf(std::optional<std::string_view> text, double largest) {
  const auto number = text ? ParseNumber(*text) : std::nullopt;
  return number && std::abs(*number) <= largest ? number : std::nullopt;
}

}  // namespace

std::string ZonePayload(const ZoneTree& tree, ZoneOrdinal zone) {
  std::string payload(1, tree.KindOf(zone) == ZoneKind::kAlerted ? 'T' : 'F');
  for (const ZoneVertex& vertex : tree.VerticesOf(zone)) {
    payload += 'T';
    AppendDegrees(payload, vertex.lat);
    AppendDegrees(payload, vertex.lng);
  }
  return payload + 'F';
}

std::optional<std::vector<ZoneVertex>> ParseShape(std::string_view payload) {
  std::vector<ZoneVertex> vertices;
  while (vertices.size() < kMaxShapeVertices) {
    const auto latText = TakeNumber(payload);
    if (!latText) break;
    const auto lat = DegreesOf(latText, 90);
    const auto lng = DegreesOf(TakeNumber(payload), 180);
    if (!lat || !lng) return std::nullopt;
    vertices.push_back({*lat, *lng});
  }
  return vertices;
}

}  // namespace pallomir
