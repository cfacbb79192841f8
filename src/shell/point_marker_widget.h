#pragma once

#include <QFrame>
#include <QPoint>
#include <array>

class QLabel;

namespace pallomir {

/// The mark of a data point over the map: four thin pictures that form a square frame around it. They are
/// children of the map's area and take neither keyboard nor mouse.
class PointMarker {
 public:
  explicit PointMarker(QWidget* mapArea);

  /// Shows the frame around a pixel of the map's area.
  void ShowAt(const QPoint& at);
  /// Shows the point's text beside the frame, inside the map's area.
  void ShowText(const QString& text);
  void Hide();

 private:
  static constexpr int kReach = 7;  // from the point to each side, pixels
  QWidget* mapArea_;
  std::array<QFrame*, 4> pictures_;  // H1, H2, V1, V2
  QLabel* lblDP_Info_;
  QPoint at_;
};

}  // namespace pallomir
