#pragma once

#include <string>
#include <vector>

#include "base/civil_time.h"
#include "commands/map_commands.h"
#include "map/map_view.h"
#include "timeline/data_strip.h"

namespace pallomir {

/// What the client shows. The main window implements it; tests record it. Nothing here waits for the user.
class ClientView : public MenuView {
 public:
  virtual void ShowCaption(bool visible) = 0;  ///< `txtCaption`
  virtual void ShowDemoMode(bool on) = 0;
  virtual bool IsTimelineVisible() const = 0;  ///< `frameTimeLine`
  virtual void ShowTimeline(bool visible) = 0;

  // Timeline
  virtual void LayOutTimeline(std::size_t rows) = 0;
  /// Columns of the strips as they are laid out now.
  virtual int TimelineWidth() const = 0;
  virtual void ShowTimelinePicture(const TimelinePicture& picture) = 0;
  virtual void ShowTimelineInfo(const std::string& text) = 0;  ///< beside the pointer
  virtual void HideTimelineInfo() = 0;

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

  // Date pickers
  virtual void ShowPicker(int i, Millis value, const std::string& format, bool visible) = 0;
  virtual void ShowReloadButton(bool visible) = 0;
  virtual void MovePointerToReloadButton() = 0;
};

}  // namespace pallomir
