#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>

#include "platform/main_window.h"
#include "window/client_view.h"

class QCheckBox;
class QFrame;
class QKeyEvent;

namespace pallomir {

class AboutBox;
class CaptionLine;
class CapturePanel;
class Client;
class FormRetryAfterError;
class HelpOverlays;
class formMapUpdating;
class formHotSpots_Edit;
class formMobileUnit_Edit;
class formSecureHotSpots_Edit;
class PickerRow;
class PointInfos;
class PointMarker;
class QuestionQueue;
class SizeGrips;
class TimelineInfo;
class TimelineStrip;
class QtMenu;
class formSplash;

/// The main window: the map in its browser, the caption line over it and the timeline under it. It has no
/// frame of the system. It shows what the client says and tells the client what the user does; it decides
/// nothing.
class formMain : public QWidget, public ClientView, public MainWindow {
 public:
  /// `browser` becomes the map, `WB`.
  explicit formMain(QWidget* browser);
  ~formMain() override;

  /// Before anything is shown.
  void Attach(Client& client, QuestionQueue& questions);

  // ClientView
  void SetCaption(const std::string& text) override;
  void ShowCaption(bool visible) override;
  void ShowLamp(const LampMessage& lamp) override;
  void ShowDemoMode(bool on) override;
  void LayOut() override;
  PixelSize BrowserSize() const override;
  bool IsTimelineVisible() const override;
  void ShowTimeline(bool visible) override;
  void SetMenuLabel(const std::string& text) override;
  void LayOutTimeline(std::size_t rows) override;
  int TimelineWidth() const override;
  void ShowTimelinePicture(const TimelinePicture& picture) override;
  void ShowTimelineInfo(const std::string& text) override;
  void HideTimelineInfo() override;
  void ShowWindowMode(WindowMode mode) override;
  void EditUnits(const std::vector<MobileUnit>& units) override;
  void ShowUnitFlags(const std::vector<MobileUnit>& units) override;
  void EditHotspots(const std::vector<std::string>& ssids) override;
  void EditSecureHotspots(const std::vector<SecureHotspot>& hotspots) override;
  void ShowAbout() override;
  void ShowSplash() override;
  void TickStatus(int line) override;
  void HideSplash() override;
  void ShowMapUpdating() override;
  void HideMapUpdating() override;
  void ShowRetry(const std::string& message) override;
  void SetRetryProgress(int bar, const std::string& label) override;
  void HideRetry() override;
  void ShowPointMarker(ViewPoint at) override;
  void ShowPointInfos(const std::vector<std::string>& texts) override;
  void HidePointInfos() override;
  void HidePointMarker() override;
  void ShowCapturePanel() override;
  void PointerOverMap(ViewPoint at) override;
  void ShowPicker(int i, Millis value, const std::string& format, bool visible) override;
  void ShowReloadButton(bool visible) override;
  void MovePointerToReloadButton() override;
  void ReturnFocus() override;
  void PopUpMenu(MenuPlace place) override;
  void CloseWindows() override;
  void EndApplication(int exitCode) override;

  // MainWindow
  std::int64_t Handle() const override;
  PixelRect WorkArea() const override;
  PixelRect Bounds() const override;
  bool IsMaximisedOneWay() const override;
  void SetBounds(const PixelRect& bounds) override;
  void Show() override;
  PixelRect Screen() const override;
  bool HasWindowManager() const override;
  bool KnowsPosition() const override;
  std::vector<PixelRect> Screens() const override;
  void SetState(WindowMode state) override;
  void SetTopmost(bool topmost) override;
  void BringToForeground() override;
  void Activate() override;
  void Close() override;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  template <class Editor, class List>
  void OpenEditor(QPointer<Editor>& editor, const List& list, void (Client::*applied)(const List&));
  std::vector<QWidget*> OpenEditors() const;

  /// A callback that calls the client's `method`; `first` are arguments before those of the callback.
  template <class Method, class... First>
  auto ToClient(Method method, First... first) {
    return [this, method, first...](auto... more) {
      if (client_) (client_->*method)(first..., more...);
    };
  }

  void BuildCaptionLine();
  void BuildTimelineFrame();
  void OrderTabs();
  void ConnectCaptionLine();
  void ConnectPickers();
  void FirstSeen();
  bool FilterKey(QWidget& widget, const QKeyEvent& event);
  void FilterMousePress(QWidget& widget);
  void LeaveChrome();

  Client* client_ = nullptr;
  Qt::WindowStates stateWhenSeen_ = Qt::WindowNoState;
  bool seen_ = false;
  QuestionQueue* questions_ = nullptr;
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
  QPointer<formMobileUnit_Edit> formMobileUnit_Edit_;
  QPointer<formHotSpots_Edit> formHotSpots_Edit_;
  QPointer<formSecureHotSpots_Edit> formSecureHotSpots_Edit_;
  AboutBox* about_;
  std::unique_ptr<HelpOverlays> help_;
  CapturePanel* picP_;
  SizeGrips* pctSizer_;
  std::unique_ptr<PointMarker> marker_;
  PointInfos* infos_;
};

}  // namespace pallomir
