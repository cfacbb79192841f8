#include "map/page_commands.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "base/number_format.h"
#include "map/tile_name.h"

namespace pallomir {
namespace {

// `position` counts from 1 at the command letter.
std::string_view Field(std::string_view text, std::size_t position,
                       std::size_t length = std::string_view::npos) {
  return position <= text.size() ? text.substr(position - 1, length) : std::string_view{};
}

std::optional<std::int32_t> Int(std::string_view field) {
  using Limits = std::numeric_limits<std::int32_t>;
  const auto number = ParseInteger(field);
  if (!number || *number < Limits::min() || *number > Limits::max()) return std::nullopt;
  return static_cast<std::int32_t>(*number);
}

constexpr std::int32_t kMaxLat = 90 * 600000;
constexpr std::int32_t kMaxLng = 180 * 600000;

bool IsPlace(std::optional<std::int32_t> lat, std::optional<std::int32_t> lng) {
  return lat && lng && *lat > -kMaxLat && *lat < kMaxLat && *lng >= -kMaxLng && *lng <= kMaxLng;
}

PageCommand ParseRightClick(std::string_view text) {
  const auto lat = Int(Field(text, 2, 10));
  const auto lng = Int(Field(text, 12, 10));
  if (!IsPlace(lat, lng)) return page::Malformed{};
  return page::PopupAtPlace{*lat, *lng};
}

PageCommand ParseMouseMove(std::string_view text) {
  // The view position may carry decimals; it is rounded. Five characters can also say 9e300.
  const auto x = ParseNumber(Field(text, 2, 5));
  const auto y = ParseNumber(Field(text, 7, 5));
  const auto lat = Int(Field(text, 12, 10));
  const auto lng = Int(Field(text, 22, 10));
  const auto zoom = Int(Field(text, 32, 3));
  constexpr double kMaxPixel = 99999;
  if (!x || !y || !(std::abs(*x) <= kMaxPixel && std::abs(*y) <= kMaxPixel)) return page::Malformed{};
  if (!IsPlace(lat, lng) || !zoom) return page::Malformed{};
  const auto rounded = [](double value) { return static_cast<int>(std::nearbyint(value)); };  // half to even
  return page::MouseMoved{rounded(*x), rounded(*y), *lat, *lng, *zoom};
}

PageCommand ParsePan(std::string_view text) {
  const std::string_view place = Field(text, 2);
  const std::size_t comma = std::min(place.find(','), place.size());
  const auto lat = ParseNumber(place.substr(0, comma));
  const auto lng = ParseNumber(place.substr(std::min(comma + 1, place.size())));
  if (!lat || !lng || !(*lat > -90 && *lat < 90 && *lng >= -180 && *lng <= 180)) return page::Malformed{};
  return page::Panned{*lat, *lng};
}

PageCommand ParseTileQuestion(std::string_view text) {
  page::TileQuestion question;
  const std::string_view kind = Field(text, 2, 1);
  if (kind == "T") question.kind = page::TileQuestion::Kind::kTrack;
  if (kind == "Z") question.kind = page::TileQuestion::Kind::kZone;
  if (const auto zoom = ParseHex(Field(text, 3, 2)); zoom && Field(text, 3, 2).size() == 2) {
    question.zoom = static_cast<int>(*zoom);
  }
  const std::string_view suffix = Field(text, 3, kTileSuffixSize);
  if (suffix.size() == kTileSuffixSize && ParseHex(suffix)) question.suffix = suffix;
  return question;
}

template <class Command>
PageCommand WithNumber(std::string_view text) {
  const auto number = Int(Field(text, 2));
  if (!number) return page::Malformed{};
  return Command{*number};
}

}  // namespace

PageCommand ParsePageCommand(std::string_view text) {
  if (text.empty()) return page::Ignored{};
  switch (text.front()) {
    case 'C':
      return page::PopupWithoutPlace{};
    case 'F':
      return ParseRightClick(text);
    case 'G':
      return page::GeocodeAnswer{DecodeGeocode(Field(text, 2))};
    case 'm':
      return ParseMouseMove(text);
    case 'M':
      return ParsePan(text);
    case 'S':
      return WithNumber<page::Status>(text);
    case 'T':
      return ParseTileQuestion(text);
    case 'z':
      return page::ZoneEdit{text.size() > 1 ? text[1] : ' ', std::string(Field(text, 3))};
    case 'Z':
      return WithNumber<page::Zoomed>(text);
    default:
      return page::Ignored{};  // "c", "r" and "t" among them
  }
}

std::string DecodeGeocode(std::string_view encoded) {
  std::string characters;  // one byte each
  for (std::size_t escape; (escape = encoded.find('%')) != std::string_view::npos;) {
    const auto code = ParseHex(encoded.substr(escape + 1, 2));
    if (!code || encoded.size() < escape + 3) break;
    characters.append(encoded.substr(0, escape));
    characters.push_back(static_cast<char>(*code));
    encoded.remove_prefix(escape + 3);
  }
  characters.resize(characters.size() - std::min<std::size_t>(characters.size(), 2));
  std::string text;
  for (const char character : characters) {
    const auto code = static_cast<unsigned char>(character);
    if (code < 0x80) {
      text.push_back(character);
    } else {
      text.push_back(static_cast<char>(0xC0 | code >> 6));
      text.push_back(static_cast<char>(0x80 | (code & 0x3F)));
    }
  }
  return text;
}

}  // namespace pallomir
