#include <cmath>
#include <cstdlib>
#include <type_traits>
#include <variant>

#include "base/number_format.h"
#include "fuzz_input.h"
#include "map/map_view.h"
#include "map/page_commands.h"
#include "map/page_fields.h"
#include "map/tile_name.h"

// What a page may say, and what the map view makes of it.
//
// Flags: -max_len=112

namespace pallomir::fuzz {
namespace {

constexpr PixelSize kBrowser{1018, 700};

struct Check {
  MapView& view;

  void operator()(const page::PopupAtPlace& place) const { IsPlace(place.lat, place.lng); }

  void operator()(const page::MouseMoved& moved) const {
    IsPlace(moved.lat, moved.lng);
    if (view.TileZoom >= 0) ViewToWorld(view, moved.x, moved.y, kBrowser);
  }

  void operator()(const page::Panned& panned) const {
    PALLOMIR_DEMAND(std::fabs(panned.lat) < 90 && std::fabs(panned.lng) <= 180);
    SetCentre(view, panned.lat, panned.lng);
    PALLOMIR_DEMAND(view.HasCentre);
    PALLOMIR_DEMAND(PlaceText(view.CentreLat, view.CentreLng).size() == 22);
    if (view.TileZoom >= 0) WorldToView(view, 1 << 29, 1 << 29, kBrowser);
  }

  void operator()(const page::TileQuestion& question) const {
    PALLOMIR_DEMAND(question.zoom >= -1 && question.zoom <= 255);
    PALLOMIR_DEMAND(question.suffix.empty() || question.suffix.size() == kTileSuffixSize);
    // It becomes part of a path.
    PALLOMIR_DEMAND(question.suffix.find_first_not_of("0123456789ABCDEFabcdef") == std::string::npos);
    SetZoom(question.zoom);
  }

  void operator()(const page::Zoomed& zoomed) const { SetZoom(zoomed.zoom); }

  template <class Other>
  void operator()(const Other&) const {}

  void SetZoom(int zoom) const {
    SetTileZoom(view, zoom);
    PALLOMIR_DEMAND(view.TileZoom >= -1 && view.TileZoom <= kMaxTileZoom);
    PALLOMIR_DEMAND(view.TileZoom < 0 || view.UnitsPerPixel == 1 << (kMaxTileZoom - view.TileZoom));
  }

  static void IsPlace(std::int32_t lat, std::int32_t lng) {
    PALLOMIR_DEMAND(std::abs(lat) < 90 * 600000 && std::abs(lng) <= 180 * 600000);
  }
};

}  // namespace
}  // namespace pallomir::fuzz

// Commands one a line, to one view.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace pallomir;
  std::string_view text = AsText({data, size});
  MapView view;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view command = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    std::visit(fuzz::Check{view}, ParsePageCommand(command));
    // Each byte of the command gives one character at most, of two bytes at most.
    PALLOMIR_DEMAND(DecodeGeocode(command).size() <= 2 * command.size());
  }
  return 0;
}
