#pragma once

#include <QWidget>
#include <vector>

#include "platform/main_window.h"

namespace pallomir {

/// The main window as the system sees it: a top-level widget without a frame of the system.
class TopLevel : public MainWindow {
 public:
  explicit TopLevel(QWidget& window) : widget_(window) {}

  /// To be called when the window is exposed.
  void Exposed();
  static WindowMode ModeOf(Qt::WindowStates states);

  std::int64_t Handle() const override;
  PixelRect WorkArea() const override;
  PixelRect Screen() const override;
  bool HasWindowManager() const override;
  bool KnowsPosition() const override;
  std::vector<PixelRect> Screens() const override;
  PixelRect Bounds() const override;
  bool IsMaximisedOneWay() const override;
  void SetBounds(const PixelRect& bounds) override;
  void SetState(WindowMode state) override;
  void SetTopmost(bool topmost) override;
  void Show() override;
  void BringToForeground() override;
  void Activate() override;
  void Close() override;

 private:
  QWidget& widget_;
  Qt::WindowStates stateWhenSeen_ = Qt::WindowNoState;
  bool seen_ = false;
};

}  // namespace pallomir
