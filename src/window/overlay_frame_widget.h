#pragma once

#include <QFrame>

namespace pallomir {

/// A framed box over its owner, which keeps its place in the middle whatever size the owner gets.
class OverlayFrame : public QFrame {
 public:
  /// Of the room that is free above and below it, `shareAbove` lies above.
  OverlayFrame(QWidget* owner, double shareAbove);

  void ShowInPlace();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void MoveToPlace();

  double shareAbove_;
};

}  // namespace pallomir
