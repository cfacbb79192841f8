#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <vector>

#include "timeline/timeline_cursor.h"

class QKeyEvent;
class QWidget;

namespace pallomir {

/// The keyboard on the rows of the timeline. Tab reaches the row that had it last; up and down go from row to
/// row. Left and right move the cursor from tick to tick, with Ctrl from label to label, Home and End to the
/// window's ends; with Shift they select a range, which Enter chooses and Escape drops.
class TimelineKeys : public QObject {
 public:
  /// `content` holds the rows. The cursor, the range and a frame round the row lie over them.
  explicit TimelineKeys(QWidget* content);

  /// The cursor came to a column of row 1, 2 ...; what is there may be told at once by Tell.
  std::function<void(int row, int column)> moved;
  std::function<void()> left;  ///< what was told of a point is old: the keyboard left the rows, or chose
  /// Shares of the window, as those of a drag.
  std::function<void(double from, double to)> chosen;

  struct Row {
    QWidget* time = nullptr;
    QWidget* data = nullptr;  ///< has the focus
  };
  void SetRows(std::vector<Row> rows);
  void Show(const TimelinePicture& picture);
  /// To be called when the rows have moved.
  void Place();
  /// The text of the hover box; ignored where the pointer has brought it.
  void Tell(const QString& hoverText);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool KeyPressed(const QKeyEvent& event);
  bool MoveCursor(const QKeyEvent& event);
  void GoToRow(std::size_t row);
  void MakeCurrent(const QObject& strip);
  void Choose();
  void Report();
  void Leave();
  bool HasFocus() const;
  QWidget& Strip() const { return *rows_[current_].data; }

  std::vector<Row> rows_;
  std::size_t current_ = 0;  // the row that Tab reaches
  TimelineCursor cursor_;
  QWidget* line_;
  QWidget* range_;
  QWidget* frame_;
  bool isReporting_ = false;
  QString details_;  // of the point at the cursor
};

}  // namespace pallomir
