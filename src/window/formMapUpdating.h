#pragma once

#include "window/overlay_frame_widget.h"

namespace pallomir {

/// The notice "Map Updating - please wait..." over the map. A click takes it away; it takes no keyboard.
class formMapUpdating : public OverlayFrame {
 public:
  explicit formMapUpdating(QWidget* owner);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
};

}  // namespace pallomir
