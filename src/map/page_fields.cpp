#include "map/page_fields.h"

#include <algorithm>
#include <string_view>

#include "base/number_format.h"

namespace pallomir {
namespace {

// What an address may hold as it is; everything else is escaped.
std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    const bool isPlain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
                         std::string_view("-._~/").find(c) != std::string_view::npos;
    escaped += isPlain ? std::string(1, c) : "%" + HexDigits(static_cast<unsigned char>(c), 2);
  }
  return escaped;
}

}  // namespace

std::string PlaceText(double lat, double lng) { return FormatSigned(lat, 3, 6) + FormatSigned(lng, 3, 6); }

std::string FitText(const MapView& view) {
  return FormatInteger(view.RequestedZoom, 2) + PlaceText(view.CentreLat, view.CentreLng);
}

PixelSize PageMapSize(PixelSize browser) {
  return {std::max(0, browser.width - 21), std::max(0, browser.height - 5)};
}

std::string MapPageAddress(const std::string& webSite, PixelSize browser) {
  const PixelSize map = PageMapSize(browser);
  return webSite + "/fullscreen/index.php?X=" + std::to_string(map.width) +
         "&Y=" + std::to_string(map.height);
}

std::string LostPageAddress(const std::filesystem::path& applicationFolder, const std::string& webSite,
                            const std::string& reason) {
  return "file://" + Escaped((applicationFolder / "no_map.html").string()) + "?site=" + Escaped(webSite) +
         "&reason=" + Escaped(reason);
}

std::string CommandPrefix(const std::string& webSite) { return "http://" + webSite + "/dummy/"; }

}  // namespace pallomir
