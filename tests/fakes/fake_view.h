#pragma once

#include <optional>
#include <set>
#include <string>
#include <utility>

#include "commands/menu_view.h"
#include "fakes/fake_feed_view.h"
#include "hotspots/hotspot_view.h"
#include "timeline/map_marks.h"
#include "timeline/picker_panel.h"
#include "timeline/timeline_panel.h"
#include "tracking/unit_view.h"
#include "window/boxes_view.h"
#include "window/frame_view.h"

namespace pallomir::fakes {

/// Keeps what the client shows.
class FakeView : public FrameView,
                 public BoxesView,
                 public FakeFeedView,
                 public UnitView,
                 public HotspotView,
                 public MenuView,
                 public PickerView,
                 public TimelineView,
                 public MarksView {
 public:
  void ShowDemoMode(bool on) override { demoMode = on; }
  void ShowCaption(bool visible) override { captionVisible = visible; }
  void LayOut() override { ++layouts; }
  PixelSize BrowserSize() const override { return browser; }
  bool IsTimelineVisible() const override { return timelineVisible; }
  void ShowTimeline(bool visible) override { timelineVisible = visible; }
  void SetMenuLabel(const std::string& text) override { menuLabel = text; }
  void ShowSplash() override { splash = true; }
  void TickStatus(int line) override { ticked.insert(line); }
  void HideSplash() override { splash = false; }
  void ShowMapUpdating() override { mapUpdating = true; }
  void HideMapUpdating() override { mapUpdating = false; }
  void LayOutTimeline(std::size_t rows) override { timelineRows = rows; }
  int TimelineWidth() const override { return 1000; }
  void ShowTimelinePicture(const TimelinePicture& drawn) override {
    picture = drawn;
    ++drawnPictures;
  }
  void ShowTimelineInfo(const std::string& text) override { timelineInfo = text; }
  void HideTimelineInfo() override { timelineInfo.reset(); }
  void PointAtTimeline(int row, int column) override { pointedAt = {row, column}; }
  void ShowWindowMode(WindowMode shown) override { mode = shown; }
  void EditUnits(const std::vector<MobileUnit>& units) override { editedUnits = units; }
  void ShowUnitFlags(const std::vector<MobileUnit>&) override {}
  void EditHotspots(const std::vector<std::string>&) override {}
  void EditSecureHotspots(const std::vector<SecureHotspot>&) override {}
  void ShowAbout() override {}
  void ShowPointMarker(ViewPoint at) override { marker = at; }
  void ShowPointInfos(const std::vector<std::string>& texts) override { pointInfos = texts; }
  void HidePointInfos() override { pointInfos.clear(); }
  void HidePointMarker() override { marker.reset(); }
  void ShowCapturePanel() override { ++capturePolls; }
  void PointerOverMap(ViewPoint at) override { pointersOverMap.push_back(at); }
  void ShowPicker(int i, Millis value, const std::string& format, bool visible) override {
    pickers[i] = {value, format, visible};
  }
  void ShowReloadButton(bool visible) override { reload = visible; }
  void MovePointerToReloadButton() override { ++pointerMoves; }
  void ReturnFocus() override { ++focusReturns; }
  void PopUpMenu(MenuPlace place) override { popups.push_back(place); }
  void CloseWindows() override {}
  void EndApplication(int code) override { exitCode = code; }

  struct Picker {
    Millis value = 0;
    std::string format;
    bool visible = false;
  };

  std::string menuLabel = "Menu";
  bool captionVisible = true;
  bool demoMode = false;
  int layouts = 0;
  PixelSize browser{1018, 700};
  bool timelineVisible = true;
  bool splash = false;
  std::set<int> ticked;
  bool mapUpdating = false;
  WindowMode mode = WindowMode::kNormal;
  std::optional<std::vector<MobileUnit>> editedUnits;
  std::optional<ViewPoint> marker;
  std::vector<std::string> pointInfos;
  int capturePolls = 0;
  std::vector<ViewPoint> pointersOverMap;
  std::size_t timelineRows = 0;
  std::optional<TimelinePicture> picture;
  int drawnPictures = 0;
  std::optional<std::string> timelineInfo;
  std::optional<std::pair<int, int>> pointedAt;  // row and column of the timeline
  Picker pickers[2];
  bool reload = false;
  int pointerMoves = 0;
  int focusReturns = 0;
  std::vector<MenuPlace> popups;
  std::optional<int> exitCode;
};

}  // namespace pallomir::fakes
