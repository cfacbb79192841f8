#pragma once

#include <QFrame>

class QLabel;

namespace pallomir {

/// The hover box of the timeline, `frameTimelineInfo` with `lblTimelineInfo`: a child of the main window that
/// lies over the map. It takes neither focus nor clicks and goes away when the pointer comes over it.
class TimelineInfo : public QFrame {
 public:
  explicit TimelineInfo(QWidget* mainWindow);

  /// Shows the text beside the pointer, inside the map's area; both in the main window's coordinates.
  void ShowText(const QString& text, QPoint pointer, const QRect& mapArea);

 protected:
  void enterEvent(QEnterEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

 private:
  QLabel* lblTimelineInfo_;
};

}  // namespace pallomir
