#pragma once

#include <QFrame>
#include <array>

namespace pallomir {

/// The mark of a data point over the map: four thin pictures that form a square frame around it. They are
/// children of the map's area and take neither keyboard nor mouse.
class PointMarker {
 public:
  explicit PointMarker(QWidget* mapArea);

  /// Shows the frame around a pixel of the map's area.
  void ShowAt(const QPoint& at);
  void Hide();

 private:
  static constexpr int kReach = 7;   // from the point to each side, pixels
  std::array<QFrame*, 4> pictures_;  // H1, H2, V1, V2
};

}  // namespace pallomir
