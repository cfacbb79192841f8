#pragma once

#include <QFrame>
#include <QPoint>
#include <QStringList>
#include <array>
#include <vector>

class QLabel;

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

/// The texts of the points at the pointer's share of the time window, one `txtDP_Info(k)` a unit, in rows
/// from the upper edge of the map down. Where they don't all fit, the last one says how many are missing.
/// They take neither keyboard nor mouse.
class PointInfos : public QFrame {
 public:
  explicit PointInfos(QWidget* mapArea);
  void ShowTexts(const QStringList& texts);

 private:
  void AddLabel();

  std::vector<QLabel*> txtDP_Info_;
};

}  // namespace pallomir
