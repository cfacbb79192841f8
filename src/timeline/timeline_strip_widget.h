#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

#include "timeline/data_strip.h"
#include "timeline/timeline_drag.h"
#include "timeline/timeline_layout.h"

class QAbstractButton;
class QFrame;
class QScrollBar;

namespace pallomir {

struct ScaleMark;
class StripRowWidgets;
class TickLabels;
class TimelineKeys;

/// The timeline strip: the tick labels over one row a unit, each a time scale and a data strip. It paints the
/// picture that it was given last and tells what the mouse and the keyboard do; it asks nobody.
class TimelineStrip : public QWidget {
 public:
  explicit TimelineStrip(QWidget* parent = nullptr);
  ~TimelineStrip() override;

  /// A drag, or a selection by keyboard, chose the part of the time window between these shares of its
  /// length, 0 <= from < to <= 1.
  std::function<void(double from, double to)> dragFinished;
  /// The pointer or the keyboard's cursor moved to another column of row 1, 2 ...
  std::function<void(int row, int column)> hovered;
  /// The pointer left the rows.
  std::function<void()> left;
  /// `imgReload` was pressed.
  std::function<void()> layoutClicked;

  /// Places the rows in the width that the widget has now, cleared until the next picture.
  void LayOutRows(int rows);
  /// Shows a picture. One of another width or number of rows is laid out for first.
  void Redraw(TimelinePicture picture);

  int ScaleWidth() const { return layout_.ScaleWidth(); }  ///< pixels, for the next picture
  /// The height that the strip wants under this window's height.
  int HeightIn(int windowHeight) const { return TimelineFrameHeight(layout_.Rows(), windowHeight); }
  QSize sizeHint() const override;

  /// As if the pointer came to this column of a row, which is scrolled to.
  void PointAt(int row, int column);

  /// The text of the hover box, for those who can't see it.
  void TellHover(const QString& text);

  /// Where the pointer or the keyboard's cursor was last seen, in this widget's coordinates.
  QPoint PointerPosition() const { return pointer_; }

  const std::vector<ScaleMark>& ScaleMarks() const;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QPoint ToContent(QPoint position) const;
  void PlaceParts();
  void PlaceRows();
  void ShowCursor(int row, int column);
  void Hover(QPoint position);
  void LeaveRows();
  double DragX(const QMouseEvent& event) const;
  void StartWatching();
  void CancelDrag();
  void DragEnded();
  void ShowBand();

  TimelineLayout layout_;
  TimelinePicture picture_;
  TimelineDrag drag_;
  bool draggedOnRow_ = false;  // the button went down on a scale or strip, not beside them
  QPoint pointer_{-1, -1};
  int hoveredRow_ = 0;
  int hoveredColumn_ = 0;

  TickLabels* scaleMarks_;
  QFrame* lineTimeLineBorder_;
  QAbstractButton* imgReload_;
  QScrollBar* scrollBar_;
  QWidget* rowsView_;     // clips the rows
  QWidget* rowsContent_;  // all of them, moved up by what is scrolled
  std::vector<std::unique_ptr<StripRowWidgets>> rows_;
  QWidget* shpZoomInterval_;
  QWidget* Shape_TimeMarker_;
  TimelineKeys* keys_;
};

}  // namespace pallomir
