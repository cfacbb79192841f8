#pragma once

#include <string>
#include <vector>

#include "map/map_view.h"

namespace pallomir {

/// What the client shows. The main window implements it; tests record it. Nothing here waits for the user.
class ClientView {
 public:
  virtual ~ClientView() = default;
  virtual void ShowDemoMode(bool on) = 0;

  // Marks over the map
  /// The square frame of four thin pictures around a view pixel.
  virtual void ShowPointMarker(ViewPoint at) = 0;
  /// A text for each displayed unit, `txtDP_Info(k)`, along the upper edge of the map.
  virtual void ShowPointInfos(const std::vector<std::string>& texts) = 0;
  virtual void HidePointInfos() = 0;
  virtual void HidePointMarker() = 0;
  /// While Shift is held and the pointer is over the map, lays the panel `picP` over it, which takes the
  /// mouse.
  virtual void ShowCapturePanel() = 0;
  /// The pointer was seen over the map: the help overlays go, unless it is on its way to one.
  virtual void PointerOverMap(ViewPoint at) = 0;
};

}  // namespace pallomir
