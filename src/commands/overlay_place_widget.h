#pragma once

#include <QWidget>
#include <algorithm>

namespace pallomir {

/// Where an overlay stands in its parent: a little inside of `corner`, moved up where the parent ends before
/// it.
inline QPoint OverlayPlace(const QWidget& overlay, const QPoint& corner) {
  constexpr QPoint kInside(5, 5);
  const QPoint place = corner + kInside;
  return {place.x(), std::max(0, std::min(place.y(), overlay.parentWidget()->height() - overlay.height()))};
}

}  // namespace pallomir
