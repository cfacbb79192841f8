#pragma once

#include <QFrame>

namespace pallomir {

/// The notice "Map Updating - please wait..." over the map. A click takes it away; it takes no keyboard.
class formMapUpdating : public QFrame {
 public:
  explicit formMapUpdating(QWidget* owner);

  /// Shows the notice in the upper part of the owner.
  void ShowNotice();

 protected:
  void mousePressEvent(QMouseEvent* event) override;
};

}  // namespace pallomir
