#pragma once

#include <QWidget>
#include <functional>
#include <optional>

namespace pallomir {

/// `picP`: a panel over the map that takes the mouse while Shift is held, and draws a rubber band, `picPP`,
/// along with a drag. It is otherwise hidden.
class CapturePanel : public QWidget {
 public:
  explicit CapturePanel(QWidget* mapArea);

  /// A drag ended; both corners in pixels of the map.
  std::function<void(QPoint, QPoint)> drawn;

  /// Shows the panel while Shift is held over the map, and hides it otherwise; a drag that has begun keeps
  /// it.
  void Poll();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  std::optional<QPoint> anchor_;
  QPoint corner_;
};

}  // namespace pallomir
