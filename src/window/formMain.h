#pragma once

#include <QWidget>
#include <memory>
#include <optional>

#include "commands/menu_view.h"
#include "timeline/map_marks.h"
#include "timeline/picker_panel.h"
#include "timeline/timeline_panel.h"
#include "tracking/feed_view.h"
#include "window/boxes_view.h"
#include "window/editors_widget.h"
#include "window/frame_view.h"
#include "window/main_window_rooms.h"
#include "window/top_level_widget.h"

class QCheckBox;
class QFrame;
class QKeyEvent;

namespace pallomir {

class AboutBox;
class CaptionLine;
class CapturePanel;
class FormRetryAfterError;
class HelpOverlays;
class formMapUpdating;
class PickerRow;
class PointInfos;
class PointMarker;
class SizeGrips;
class TimelineInfo;
class TimelineStrip;
class QtMenu;
class formSplash;

/// The main window: the map in its browser, the caption line over it and the timeline under it. It has no
/// frame of the system. It shows what the rooms say and tells them what the user does; it decides nothing.
class formMain : public QWidget,
                 public FrameView,
                 public BoxesView,
                 public MenuView,
                 public FeedView,
                 public PickerView,
                 public TimelineView,
                 public MarksView {
 public:
  /// `browser` becomes the map, `WB`.
  explicit formMain(QWidget* browser);
  ~formMain() override;

  /// Before anything is shown.
  void Attach(MainWindowRooms rooms);

  MainWindow& System() { return system_; }
  HotspotView& Hotspots() { return editors_; }
  UnitView& Units() { return editors_; }

  // FrameView
  void LayOut() override;
  PixelSize BrowserSize() const override;
  void ShowDemoMode(bool on) override;
  void ShowWindowMode(WindowMode mode) override;
  void ReturnFocus() override;

  // BoxesView
  void ShowAbout() override;
  void ShowSplash() override;
  void TickStatus(int line) override;
  void HideSplash() override;
  void ShowMapUpdating() override;
  void HideMapUpdating() override;
  void CloseWindows() override;
  void EndApplication(int exitCode) override;

  // MenuView
  void PopUpMenu(MenuPlace place) override;
  void SetMenuLabel(const std::string& text) override;

  // FeedView
  void SetCaption(const std::string& text) override;
  void ShowLamp(const LampMessage& lamp) override;
  void ShowRetry(const std::string& message) override;
  void SetRetryProgress(int bar, const std::string& label) override;
  void HideRetry() override;

  // PickerView
  void ShowPicker(int i, Millis value, const std::string& format, bool visible) override;
  void ShowReloadButton(bool visible) override;
  void MovePointerToReloadButton() override;
  void ShowCaption(bool visible) override;

  // TimelineView
  bool IsTimelineVisible() const override;
  void ShowTimeline(bool visible) override;
  void LayOutTimeline(std::size_t rows) override;
  int TimelineWidth() const override;
  void ShowTimelinePicture(const TimelinePicture& picture) override;
  void ShowTimelineInfo(const std::string& text) override;
  void HideTimelineInfo() override;

  // MarksView
  void ShowPointMarker(ViewPoint at) override;
  void ShowPointInfos(const std::vector<std::string>& texts) override;
  void HidePointInfos() override;
  void HidePointMarker() override;
  void ShowCapturePanel() override;
  void PointerOverMap(ViewPoint at) override;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// A callback that hands the rooms and its arguments to `tell`, while there are rooms to tell.
  template <class Tell>
  auto Told(Tell tell) {
    return [this, tell](auto... what) {
      if (rooms_) tell(*rooms_, what...);
    };
  }

  void BuildCaptionLine();
  void BuildTimelineFrame();
  void OrderTabs();
  void ConnectCaptionLine();
  void ConnectPickers();
  void ConnectTimeline();
  void ConnectDialogs();
  bool FilterKey(QWidget& widget, const QKeyEvent& event);
  void FilterMousePress(QWidget& widget);
  void LeaveChrome();

  std::optional<MainWindowRooms> rooms_;
  TopLevel system_{*this};
  Editors editors_{this};
  QWidget* mapArea_;  // clips WB, which is wider than the window
  QWidget* WB_;
  CaptionLine* captionLine_;
  PickerRow* pickers_;
  QFrame* frameTimeLine_;
  TimelineStrip* strip_;
  TimelineInfo* frameTimelineInfo_;
  QCheckBox* FocusGetter_;
  std::unique_ptr<QtMenu> formMnu_;  // the menus; only their first one is ever shown, as the popup
  formSplash* formSplash_;
  formMapUpdating* formMapUpdating_;
  FormRetryAfterError* FormRetryAfterError_;
  AboutBox* about_;
  std::unique_ptr<HelpOverlays> help_;
  CapturePanel* picP_;
  SizeGrips* pctSizer_;
  std::unique_ptr<PointMarker> marker_;
  PointInfos* infos_;
};

}  // namespace pallomir
