#include "window/map_overlays_widget.h"

namespace pallomir {

MapOverlays::MapOverlays(QWidget* mapArea)
    : picP_(new CapturePanel(mapArea)), marker_(mapArea), infos_(new PointInfos(mapArea)), help_(mapArea) {}

void MapOverlays::ShowPointMarker(ViewPoint at) { marker_.ShowAt({at.x, at.y}); }
void MapOverlays::HidePointMarker() { marker_.Hide(); }

void MapOverlays::ShowPointInfos(const std::vector<std::string>& texts) {
  QStringList lines;
  for (const std::string& text : texts) lines += QString::fromStdString(text);
  infos_->ShowTexts(lines);
  help_.Raise();  // what is being read stays on top
}

void MapOverlays::HidePointInfos() { infos_->hide(); }
void MapOverlays::ShowCapturePanel() { picP_->Poll(); }
void MapOverlays::PointerOverMap(ViewPoint at) { help_.PointerOverMap({at.x, at.y}); }

}  // namespace pallomir
