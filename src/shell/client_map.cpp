#include <algorithm>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "shell/client.h"

// What lies over the map, and what the page wants of the rest of the program.

namespace pallomir {

MapBridge::Host Client::MapHost() {
  MapBridge::Host host;
  host.isClosing = [this] { return closing_; };
  host.browserSize = [this] { return ports_.views.frame.BrowserSize(); };
  host.drawing = [this] { return Drawing(); };
  host.isTopLevelAlerted = [this] { return zones_.IsTopLevelAlerted(); };
  host.viewMoved = [this] { HidePointMarker(); };
  host.rebuildFailed = [this](const DeleteError& error) {
    ports_.questions.Tell("Error " + std::to_string(error.number) + ":\n" + error.description, "Pallomir",
                          Question::Icon::kError, [this](const Answer&) { ports_.window.Close(); });
  };
  host.rebuildEnded = [this] { mapUpdating_.HideWhenDone(); };
  host.reached = [this](int line) { ports_.views.boxes.TickStatus(line); };
  host.ready = [this] {
    ports_.views.boxes.HideSplash();
    zones_.OnPageReady();
  };
  host.lost = [this] {
    ports_.views.boxes.HideSplash();
    zones_.OnPageLost();
  };
  host.choices = [this] { return mapCommands_->Choices(); };
  host.pointerMoved = [this](ViewPoint at) { OnPointerMoved(at); };
  host.menuWanted = [this] {
    zones_.OfferNone();
    mapCommands_->PopUpAtPointer(false);
  };
  host.menuWantedAt = [this](double lat, double lng) {
    zones_.OfferZoneAt(lat, lng);
    mapCommands_->PopUpAtPointer(true);
  };
  host.addressFound = [this](const std::string& address) { Run(seams.showGeocode, address); };
  host.shapeFinished = [this](const std::string& payload) { zones_.OnShapeFinished(payload); };
  host.shapeCancelled = [this] { zones_.OnShapeCancelled(); };
  host.shapeClosable = [this] { zones_.OnShapeClosable(); };
  return host;
}

TrackDrawing Client::Drawing() {
  TrackDrawing drawing;
  for (std::size_t k = 1; k <= store_.UnitCount(); ++k) drawing.units.push_back(store_.Track(k).Points());
  drawing.ringReceived = menus_.At(Command::kContactPoint, 0).checked;
  drawing.ringNotReceived = menus_.At(Command::kContactPoint, 1).checked;
  return drawing;
}

void Client::OnPointerMoved(ViewPoint at) {
  timeline_.HideInfo();
  ports_.view.PointerOverMap(at);
  ShowPointAtShare(at.x);
}

// Shows the notice that the map is being drawn; gives the box of the enabled unit k, of all for 0.
WorldBox Client::BeginFit(std::size_t k) {
  ports_.trace.Line("Fit begin...");
  mapUpdating_.Show();
  WorldBox box;
  for (std::size_t unit = 1; unit <= store_.UnitCount(); ++unit) {
    if (k == 0 || unit == k) box = BoxOf(store_.Track(unit).Points(), box);
  }
  return box.IsEmpty() ? DefaultBox() : box;
}

void Client::HidePointMarker() {
  Run(seams.closeReports);
  HidePointInfos();
  ports_.view.HidePointMarker();
}

void Client::ShowPointMarker(std::size_t k, std::size_t index) {
  if (view_.UnitsPerPixel == 0 || k == 0 || k > store_.UnitCount()) return;
  const auto points = store_.Track(k).Points();
  if (index == 0 || index > points.size()) return;
  const DataPoint& point = points[index - 1];
  ports_.view.HidePointMarker();
  ports_.view.ShowPointMarker(WorldToView(view_, point.x, point.y, ports_.views.frame.BrowserSize()));
  boxTimer_->SetEnabled(true);
}

// The map's width, less a margin of 20 pixels on each side, stands for the time window. For each unit the
// point nearest to the instant under the pointer is described; the one nearest to the pointer on the map is
// marked.
void Client::ShowPointAtShare(int x) {
  constexpr int kMargin = 20;
  const PixelSize browser = ports_.views.frame.BrowserSize();
  const double share = (x - kMargin) / static_cast<double>(browser.width - 2 * kMargin);
  if (closing_ || browser.width <= 2 * kMargin || share < 0 || share > 1) return HidePointInfos();
  const TimeWindow& window = pickers_.Window();
  const Millis local = window.start + static_cast<Millis>(share * static_cast<double>(window.Length()));
  std::vector<std::string> texts;
  std::optional<std::pair<std::size_t, std::size_t>> marked;  // unit and point, from 1
  int leastDistance = 0;
  for (std::size_t k = 1; k <= points_.UnitCount(); ++k) {
    const auto index = points_.NearestTo(k, local);
    if (!index) continue;
    texts.push_back(points_.TextOf(k, *index));
    if (view_.UnitsPerPixel == 0) continue;
    const DataPoint& point = *points_.Find(k, *index);
    const ViewPoint at = WorldToView(view_, point.x, point.y, browser);
    const bool isOnMap =
        at.x >= 0 && at.y >= 0 && at.x < browser.width - kUnusedBrowserWidth && at.y < browser.height;
    if (!isOnMap || (marked && std::abs(at.x - x) >= leastDistance)) continue;
    marked = {k, *index + 1};
    leastDistance = std::abs(at.x - x);
  }
  if (texts.empty()) return HidePointInfos();
  ports_.view.ShowPointInfos(texts);
  if (marked) ShowPointMarker(marked->first, marked->second);
}

void Client::HidePointInfos() { ports_.view.HidePointInfos(); }

void Client::OnCaptureTick() { ports_.view.ShowCapturePanel(); }

void Client::RubberBandDrawn(ViewPoint a, ViewPoint b) {
  // Less than that is a click with an unsteady hand.
  constexpr int kSmallest = 4;
  if (closing_ || view_.UnitsPerPixel == 0 || std::abs(a.x - b.x) < kSmallest ||
      std::abs(a.y - b.y) < kSmallest) {
    return;
  }
  const PixelSize browser = ports_.views.frame.BrowserSize();
  const WorldPoint first = ViewToWorld(view_, a.x, a.y, browser);
  const WorldPoint second = ViewToWorld(view_, b.x, b.y, browser);
  WorldBox box;
  box.Widen(first.x, first.y);
  box.Widen(second.x, second.y);
  map_->ZoomTo(box);
}

void Client::OnBoxTick() {
  ports_.view.HidePointMarker();
  boxTimer_->SetEnabled(false);
}

}  // namespace pallomir
