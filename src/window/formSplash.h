#pragma once

#include <vector>

#include "window/overlay_frame_widget.h"

class QCheckBox;

namespace pallomir {

/// The About window as it is at the start: over the main window, with the list of what the map page has built
/// so far. It goes when the page is ready, or by its OK button; the map can be worked with meanwhile.
class formSplash : public OverlayFrame {
 public:
  formSplash(QWidget* owner, const QString& version);

  static constexpr int kStatusLines = 17;

  /// Ticks line 1..17.
  void Tick(int line);

 private:
  std::vector<QCheckBox*> lines_;
};

}  // namespace pallomir
