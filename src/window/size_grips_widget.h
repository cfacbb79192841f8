#pragma once

#include <QObject>
#include <QRect>
#include <array>

class QWidget;

namespace pallomir {

/// The smallest main window.
constexpr QSize kSmallestWindow(640, 360);

/// What becomes of `start` when its `edges` are dragged by `by`: the other edges stay, and no side gets
/// shorter than the smallest window's.
QRect DraggedBounds(const QRect& start, Qt::Edges edges, QPoint by);

/// `pctSizer`: invisible grips on the four edges and corners of a window without a frame. They keep to the
/// window's size by themselves.
class SizeGrips : public QObject {
 public:
  explicit SizeGrips(QWidget* window);

  /// Without grips while the window is maximised or full screen.
  void SetEnabled(bool enabled);
  /// Lays the grips over whatever else the window has got since.
  void Raise();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void LayOut();

  QWidget* window_;
  std::array<QWidget*, 8> grips_{};
};

}  // namespace pallomir
