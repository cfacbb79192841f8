#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace pallomir {

/// What the map page tells the host, one type a command. Positions are in 1/600000 degree.
namespace page {

struct PopupWithoutPlace {};
struct PopupAtPlace {
  std::int32_t lat = 0;
  std::int32_t lng = 0;
};
struct GeocodeAnswer {
  std::string text;  ///< decoded, UTF-8
};
struct MouseMoved {
  int x = 0;  ///< view pixels
  int y = 0;
  std::int32_t lat = 0;
  std::int32_t lng = 0;
  int zoom = 0;
};
struct Panned {
  double lat = 0;  ///< degrees
  double lng = 0;
};
struct Status {
  int number = 0;
};
struct TileQuestion {
  enum class Kind { kTrack, kZone, kUnknown };
  Kind kind = Kind::kUnknown;
  int zoom = -1;       ///< -1 when its digits are none
  std::string suffix;  ///< zoom, column, row: 14 digits of the tile name; empty when they are none
};
struct Zoomed {
  int zoom = 0;
};
struct ZoneEdit {
  char sub = ' ';  ///< 'F' shape finished, 'C' cancelled, '3' closable; any other is an error
  std::string payload;
};
/// A command that means nothing to the host.
struct Ignored {};
/// A command whose numbers are none.
struct Malformed {};

}  // namespace page

using PageCommand = std::variant<page::Ignored, page::Malformed, page::PopupWithoutPlace, page::PopupAtPlace,
                                 page::GeocodeAnswer, page::MouseMoved, page::Panned, page::Status,
                                 page::TileQuestion, page::Zoomed, page::ZoneEdit>;

/// Reads the text behind the command prefix. Letters count with their case.
PageCommand ParsePageCommand(std::string_view text);

/// The text of a geocode answer, as UTF-8: each "%" with two hexadecimal digits is the character of that code
/// (0 to 255); what follows the last escape is dropped, and then the two filler characters. A "%" without two
/// digits ends the text.
std::string DecodeGeocode(std::string_view encoded);

}  // namespace pallomir
