#pragma once

#include <QWidget>
#include <array>
#include <memory>

#include "platform/main_window.h"
#include "shell/client_view.h"

class QCheckBox;
class QFrame;
class QLabel;
class QPushButton;

namespace pallomir {

class Client;
class DateTimePicker;
class FormRetryAfterError;
class formMapUpdating;
class PointMarker;
class TimelineInfo;
class TimelineStrip;
class QtMenu;
class formSplash;

/// The main window: the map in its browser, and under it the timeline's frame with pickers, caption and menu
/// button. It shows what the client says and tells the client what the user does; it decides nothing.
class formMain : public QWidget, public ClientView, public MainWindow {
 public:
  /// `browser` becomes the map, `WB`.
  explicit formMain(QWidget* browser);
  ~formMain() override;

  /// Before anything is shown. The client outlives the window's last event.
  void Attach(Client& client);

  // ClientView
  void SetCaption(const std::string& text) override;
  void ShowCaption(bool visible) override;
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
  void ShowSplash() override;
  void TickStatus(int line) override;
  void HideSplash() override;
  void ShowMapUpdating() override;
  void HideMapUpdating() override;
  void ShowRetry(const std::string& message) override;
  void SetRetryProgress(int bar, const std::string& label) override;
  void HideRetry() override;
  void ShowPointMarker(ViewPoint at) override;
  void HidePointMarker() override;
  void ShowPicker(int i, Millis value, const std::string& format, bool visible) override;
  void ShowReloadButton(bool visible) override;
  void MovePointerToReloadButton() override;
  void ReturnFocus() override;
  void PopUpMenu() override;
  void CloseWindows() override;
  void EndApplication(int exitCode) override;

  // MainWindow
  std::int64_t Handle() const override;
  PixelRect WorkArea() const override;
  PixelRect Bounds() const override;
  void SetBounds(const PixelRect& bounds) override;
  void Show() override;
  void Maximise() override;
  bool IsMaximised() const override;
  bool IsMinimised() const override;
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
  void BuildTimelineFrame();
  void ConnectPicker(int i);
  bool IsPickerFocused() const;

  Client* client_ = nullptr;
  QWidget* mapArea_;  // clips WB, which is wider than the window
  QWidget* WB_;
  QFrame* frameTimeLine_;
  TimelineStrip* strip_;
  TimelineInfo* frameTimelineInfo_;
  QPushButton* lblMenu_;
  std::array<DateTimePicker*, 2> DTP_{};
  QPushButton* cmdOK_Reload_;
  QLabel* lblCaption_;
  QCheckBox* FocusGetter_;
  std::unique_ptr<QtMenu> formMnu_;  // the menus; only their first one is ever shown, as the popup
  formSplash* formSplash_;
  formMapUpdating* formMapUpdating_;
  FormRetryAfterError* FormRetryAfterError_;
  std::unique_ptr<PointMarker> marker_;
};

}  // namespace pallomir
