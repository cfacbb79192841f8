#include "map/page_fields.h"

#include <algorithm>

#include "base/number_format.h"

namespace pallomir {

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

std::string CommandPrefix(const std::string& webSite) { return "http://" + webSite + "/dummy/"; }

}  // namespace pallomir
