#pragma once

#include "timeline/map_marks.h"
#include "window/capture_panel_widget.h"
#include "window/help_overlays_widget.h"
#include "window/point_marker_widget.h"

namespace pallomir {

/// What lies over the map: the marks and texts of points, the panel for drawing a box, the helps.
class MapOverlays : public MarksView {
 public:
  /// All of it are children of `mapArea`, and end with it.
  explicit MapOverlays(QWidget* mapArea);

  CapturePanel& Panel() { return *picP_; }
  HelpOverlays& Help() { return help_; }

  void ShowPointMarker(ViewPoint at) override;
  void HidePointMarker() override;
  void ShowPointInfos(const std::vector<std::string>& texts) override;
  void HidePointInfos() override;
  void ShowCapturePanel() override;
  void PointerOverMap(ViewPoint at) override;

 private:
  CapturePanel* picP_;  // this order is that of the layers
  PointMarker marker_;
  PointInfos* infos_;
  HelpOverlays help_;
};

}  // namespace pallomir
