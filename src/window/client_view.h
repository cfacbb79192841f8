#pragma once

#include <string>
#include <vector>

#include "base/civil_time.h"
#include "commands/map_commands.h"
#include "hotspots/hotspot_lists.h"
#include "map/map_view.h"
#include "platform/geometry.h"
#include "platform/main_window.h"
#include "timeline/data_strip.h"
#include "tracking/feed_view.h"
#include "tracking/mobile_units.h"

namespace pallomir {

/// What the client shows. The main window implements it; tests record it. Nothing here waits for the user.
class ClientView : public FeedView, public MenuView {
 public:
  // Caption and layout
  virtual void ShowCaption(bool visible) = 0;  ///< `txtCaption`
  virtual void ShowDemoMode(bool on) = 0;
  /// Places the map, the caption line and the timeline in the window as large as it is now.
  virtual void LayOut() = 0;
  /// The browser control's size, the unused 18 pixels of its width included.
  virtual PixelSize BrowserSize() const = 0;
  virtual bool IsTimelineVisible() const = 0;  ///< `frameTimeLine`
  virtual void ShowTimeline(bool visible) = 0;

  // Timeline
  virtual void LayOutTimeline(std::size_t rows) = 0;
  /// Columns of the strips as they are laid out now.
  virtual int TimelineWidth() const = 0;
  virtual void ShowTimelinePicture(const TimelinePicture& picture) = 0;
  virtual void ShowTimelineInfo(const std::string& text) = 0;  ///< beside the pointer
  virtual void HideTimelineInfo() = 0;

  /// Which of the caption line's buttons is the pressed one; grips are there in the normal mode only.
  virtual void ShowWindowMode(WindowMode mode) = 0;

  // Windows of their own
  // The editors, modeless; one that is open comes forward and keeps what was entered.
  virtual void EditUnits(const std::vector<MobileUnit>& units) = 0;
  /// A key or the menu changed flags of the units: an open editor takes them over.
  virtual void ShowUnitFlags(const std::vector<MobileUnit>& units) = 0;
  virtual void EditHotspots(const std::vector<std::string>& ssids) = 0;
  virtual void EditSecureHotspots(const std::vector<SecureHotspot>& hotspots) = 0;
  virtual void ShowAbout() = 0;
  virtual void ShowSplash() = 0;
  virtual void TickStatus(int line) = 0;  ///< 1..17
  virtual void HideSplash() = 0;
  virtual void ShowMapUpdating() = 0;
  virtual void HideMapUpdating() = 0;

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

  // Keyboard
  /// Gives the keyboard to `FocusGetter`, unless it or a date picker has it, a popup is open or another
  /// window is active.
  virtual void ReturnFocus() = 0;

  /// Unloads all secondary windows.
  virtual void CloseWindows() = 0;
  /// The shut-down is done: the process ends with this exit code.
  virtual void EndApplication(int exitCode) = 0;
};

}  // namespace pallomir
