#pragma once

#include <QWidget>
#include <memory>
#include <optional>

#include "commands/menu_view.h"
#include "timeline/picker_panel.h"
#include "tracking/feed_view.h"
#include "window/editors_widget.h"
#include "window/frame_view.h"
#include "window/main_window_rooms.h"
#include "window/top_level_widget.h"

class QCheckBox;
class QKeyEvent;

namespace pallomir {

class BoxesView;
class WindowBoxes;
class CaptionLine;
class FormRetryAfterError;
class MapOverlays;
class PickerRow;
class SizeGrips;
class QtMenu;
class TimelineFrame;

/// The main window: the map in its browser, the caption line over it and the timeline under it. It has no
/// frame of the system. It shows what the rooms say and tells them what the user does; it decides nothing.
class formMain : public QWidget, public FrameView, public MenuView, public FeedView, public PickerView {
 public:
  /// `browser` becomes the map, `WB`.
  explicit formMain(QWidget* browser);
  ~formMain() override;

  /// Puts what tells of a state of the program into the caption line, which owns it from now on.
  void AddState(QWidget* control);

  /// Before anything is shown.
  void Attach(MainWindowRooms rooms);

  MainWindow& System() { return system_; }
  HotspotView& Hotspots() { return editors_; }
  UnitView& Units() { return editors_; }
  BoxesView& Boxes();
  TimelineView& Timeline();
  MarksView& Marks();

  // FrameView
  void LayOut() override;
  PixelSize BrowserSize() const override;
  void ShowDemoMode(bool on) override;
  void ShowWindowMode(WindowMode mode) override;
  void ReturnFocus() override;

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

  void OrderTabs();
  void ConnectCaptionLine();
  void ConnectTime();
  void ConnectDialogs();
  bool FilterKey(QWidget& widget, const QKeyEvent& event);
  bool FilterEscape(const QWidget& widget);
  void FilterMousePress(QWidget& widget);
  void LeaveChrome();

  std::optional<MainWindowRooms> rooms_;
  TopLevel system_{*this};
  Editors editors_{this};
  QWidget* mapArea_;  // clips WB, which is wider than the window
  QWidget* WB_;
  CaptionLine* captionLine_;
  PickerRow* pickers_;
  std::unique_ptr<MapOverlays> overlays_;
  std::unique_ptr<WindowBoxes> boxes_;
  TimelineFrame* frameTimeLine_;
  QCheckBox* FocusGetter_;
  std::unique_ptr<QtMenu> formMnu_;  // the menus; only their first one is ever shown, as the popup
  FormRetryAfterError* FormRetryAfterError_;
  SizeGrips* pctSizer_;
};

}  // namespace pallomir
