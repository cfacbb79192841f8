#include <algorithm>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "map/page_fields.h"
#include "map/projection.h"
#include "shell/client.h"

// The map page, both ways, and the tracks that lie over it.

namespace pallomir {

bool Client::BeforeNavigate(const std::string& url) {
  const std::string prefix = CommandPrefix(ports_.deployment.webSite);
  if (!url.starts_with(prefix)) return false;
  // The browser waits for the answer, and what a command does may take long: it is run afterwards, in order.
  ports_.loop.Post([this, text = url.substr(prefix.size())] { RunPageCommand(text); });
  return true;
}

void Client::RunPageCommand(const std::string& text) {
  if (closing_) return;
  const PageCommand command = ParsePageCommand(text);
  if (std::holds_alternative<page::Malformed>(command)) {
    ports_.trace.Line("page command left out, its numbers are none: " + text.substr(0, 80));
  }
  std::visit([this](const auto& parsed) { OnPage(parsed); }, command);
}

void Client::OnPage(const page::PopupWithoutPlace&) {
  menus_.At("mnuPopupBeenHere").enabled = false;
  menus_.At("mnuPopupDsplyDataPoints").enabled = false;
  ports_.view.PopUpMenu(ClientView::MenuPlace::kAtPointer);
}

void Client::OnPage(const page::PopupAtPlace& click) {
  page_.RightClickX = LngToWorldX(click.lng);
  page_.RightClickY = LatToWorldY(click.lat);
  Run(seams.offerZonesAt, click.lat / kPositionUnitsPerDegree, click.lng / kPositionUnitsPerDegree);
  menus_.At("mnuPopupBeenHere").enabled = true;
  menus_.At("mnuPopupDsplyDataPoints").enabled = true;
  ports_.view.PopUpMenu(ClientView::MenuPlace::kAtPointer);
}

void Client::OnPage(const page::GeocodeAnswer& answer) { Run(seams.showGeocode, answer.text); }

void Client::OnPage(const page::MouseMoved& move) {
  page_.MouseMoveToggle = !page_.MouseMoveToggle;
  if (!page_.MouseMoveToggle) return;
  OnTimelineInfoTick();
  ports_.view.HideHelp();
  ShowPointAtShare(move.x);
  page_.LastMouseLat = move.lat;
  page_.LastMouseLng = move.lng;
  page_.LastMouseZoom = move.zoom;
}

void Client::OnPage(const page::Panned& pan) {
  SetCentre(view_, pan.lat, pan.lng);
  HidePointMarker();
}

void Client::OnPage(const page::Status& status) {
  constexpr int kMapCreated = 1;
  constexpr int kLastLine = 17;
  constexpr int kReady = 99;
  if (status.number >= 1 && status.number <= kLastLine) ports_.view.TickStatus(status.number);
  if (status.number == kReady) splashPause_->SetEnabled(true);
  if (status.number != kMapCreated) return;
  page_.MapCreated = true;
  // The window may have changed since the address was made.
  if (PageMapSize(ports_.view.BrowserSize()) != pageAddressSize_) SendPageSize();
  if (firstFitPending_ && !waitingFit_) SendFirstFit(FitText(view_));
}

// The page is complete, half a second ago.
void Client::OnPageReady() {
  splashPause_->SetEnabled(false);
  ports_.view.HideSplash();
  ports_.trace.Line("map page ready");
  WriteToggle("mnuViewMapData", field::kMapData);
  WriteToggle("mnuViewTrackingData", field::kTrackingData);
  WriteMapType();
  // A page that comes back after a loss begins with neither, and with all zones.
  if (menus_.At("mnuPopupPanorama").checked) SetPanorama(true);
  if (menus_.At("mnuPopupStreetView").checked) ports_.browser.WriteField(field::kStreetView, "True");
  if (!menus_.At("mnuViewZones").checked) WriteToggle("mnuViewZones", field::kZonesShown);
  Run(seams.loadZones);
}

void Client::OnPage(const page::TileQuestion& question) {
  const bool isZoom = question.zoom >= kMinTileZoom && question.zoom <= kMaxTileZoom;
  if (isZoom) ChangeTileZoom(question.zoom, ZoomOrigin::kNewTile);
  if (question.kind == page::TileQuestion::Kind::kUnknown) return;
  if (!tiles_->IsRebuilding()) return AnswerTile(question);
  constexpr std::size_t kMostWaiting = 64;  // the page waits for each answer, and asks again when none comes
  if (waitingQuestions_.size() == kMostWaiting) waitingQuestions_.pop_front();
  waitingQuestions_.push_back(question);
}

void Client::AnswerTile(const page::TileQuestion& question) {
  using Kind = page::TileQuestion::Kind;
  const bool isZoom = question.zoom >= kMinTileZoom && question.zoom <= kMaxTileZoom;
  const std::string suffix = isZoom ? question.suffix : std::string();
  if (question.kind == Kind::kTrack) {
    const std::string path = tiles_->TrackTilePath(suffix);
    ports_.browser.WriteField(field::kTrackTile, path);
    if (!path.ends_with(kBlankTile)) ports_.trace.Line("track tile " + suffix + " handed to the page");
  } else {
    const bool alerted = seams.isTopLevelAlerted && seams.isTopLevelAlerted();
    ports_.browser.WriteField(field::kZoneTile,
                              isZoom ? tiles_->ZoneTilePath(suffix, alerted) : tiles_->TrackTilePath(""));
  }
}

void Client::OnPage(const page::Zoomed& zoomed) { ChangeTileZoom(zoomed.zoom, ZoomOrigin::kZoom); }

void Client::OnPage(const page::ZoneEdit& edit) {
  if (edit.sub == 'F' || edit.sub == 'C' || edit.sub == '3') {
    Run(seams.editZone, edit.sub, edit.payload);
  } else {
    ports_.questions.Tell("System Error 3907");
  }
}

void Client::OnPageLost(const std::string& reason) {
  if (closing_) return;
  ports_.trace.Line("map page lost: " + reason);
  page_.MapCreated = false;
  page_.FirstFitSent = false;
  firstFitPending_ = fitted_;
  waitingQuestions_.clear();  // the next page asks its own
  pageRetry_->SetEnabled(true);
  ports_.view.HideSplash();
  if (std::exchange(pageLost_, true)) return;  // the placeholder is missing too
  ports_.browser.Navigate(ports_.folders.application / "blank_blue.html");
}

void Client::NavigateToMap() {
  pageRetry_->SetEnabled(false);
  pageLost_ = false;
  const PixelSize browser = ports_.view.BrowserSize();
  pageAddressSize_ = PageMapSize(browser);
  const std::string address = MapPageAddress(ports_.deployment.webSite, browser);
  ports_.trace.Line("map page " + address);
  ports_.browser.Navigate(address);
}

void Client::ChangeTileZoom(int zoom, ZoomOrigin origin) {
  ports_.trace.Line("ZoomChange begin (NewZoom = " + std::to_string(zoom) +
                    ", Origin = " + (origin == ZoomOrigin::kZoom ? "Zoom" : "NewTile") + ")...");
  const ZoomChange change = SetTileZoom(view_, zoom, origin);
  if (change == ZoomChange::kNone) return;
  if (change == ZoomChange::kChanged || rebuildOwed_) RebuildTiles();
  HidePointMarker();
}

void Client::RebuildTiles() {
  TrackDrawing drawing;
  for (std::size_t k = 1; k <= store_.UnitCount(); ++k) drawing.units.push_back(store_.Track(k).Points());
  drawing.CentreX = view_.CentreX;
  drawing.CentreY = view_.CentreY;
  drawing.UnitsPerPixel = view_.UnitsPerPixel;
  drawing.TileZoom = view_.TileZoom;
  drawing.browser = ports_.view.BrowserSize();
  drawing.ringReceived = menus_.At("mnuOptionsContactPointsArray", 0).checked;
  drawing.ringNotReceived = menus_.At("mnuOptionsContactPointsArray", 1).checked;
  const bool zoomIsKnown = view_.TileZoom >= 0;
  rebuildOwed_ = !zoomIsKnown && store_.PointCount() > 0;
  tiles_->Begin(zoomIsKnown ? std::optional(std::move(drawing)) : std::nullopt);
  tmrTiles_->SetEnabled(true);
}

void Client::OnTilesTick() {
  const auto end = tiles_->Continue();
  if (!end) return;
  tmrTiles_->SetEnabled(false);
  if (const auto& error = end->error) {
    ports_.questions.Tell("Error " + std::to_string(error->number) + ":\n" + error->description, "Pallomir",
                          Question::Icon::kError, [this](const Answer&) { ports_.window.Close(); });
  } else {
    notDrawn_ = rebuildOwed_;
    ports_.trace.Line("track tiles " + tiles_->GenerationText() + " written");
    ports_.browser.WriteField(field::kGeneration, tiles_->GenerationText());
  }
  if (const auto fit = std::exchange(waitingFit_, std::nullopt)) {
    SendFit(*fit);
    ports_.trace.Line("...end Fit");
  }
  HideMapUpdating();
  for (const auto& question : std::exchange(waitingQuestions_, {})) AnswerTile(question);
}

// Its points are about to change; what waits for its end waits for that of the next one.
void Client::DropRebuild() {
  tiles_->Drop();
  tmrTiles_->SetEnabled(false);
}

void Client::FitToData(std::size_t k) {
  ports_.trace.Line("Fit begin...");
  mapUpdatingShown_ = true;
  ports_.view.ShowMapUpdating();
  WorldBox box;
  for (std::size_t unit = 1; unit <= store_.UnitCount(); ++unit) {
    if (k == 0 || unit == k) box = BoxOf(store_.Track(unit).Points(), box);
  }
  view_.DataBox = box.IsEmpty() ? DefaultBox() : box;
  view_.PreviousRequestedZoom = view_.RequestedZoom;
  FitToBox(view_, view_.DataBox, ports_.view.BrowserSize());
  waitingFit_ = FitText(view_);  // the page may report another centre meanwhile
  RebuildTiles();
}

void Client::SendFit(const std::string& fit) {
  if (page_.FirstFitSent) {
    ports_.browser.WriteField(field::kFit, fit);
  } else if (fitted_) {
    firstFitPending_ = true;
    if (page_.MapCreated) SendFirstFit(fit);
  }
}

void Client::SendFirstFit(const std::string& fit) {
  firstFitPending_ = false;
  page_.FirstFitSent = true;
  ports_.browser.WriteField(field::kFirstFit, fit);
}

void Client::SendPan(double lat, double lng) { ports_.browser.WriteField(field::kPan, PlaceText(lat, lng)); }

void Client::SendPageSize() {
  const PixelSize map = PageMapSize(ports_.view.BrowserSize());
  ports_.trace.Line("map size X=" + std::to_string(map.width) + "&Y=" + std::to_string(map.height));
  ports_.browser.WriteField(field::kWidth, std::to_string(map.width));
  ports_.browser.WriteField(field::kHeight, std::to_string(map.height));
}

void Client::SendCentre() {
  if (view_.HasCentre) SendPan(view_.CentreLat, view_.CentreLng);
}

void Client::WriteToggle(const char* menu, const char* field) {
  ports_.browser.WriteField(field, menus_.At(menu).checked ? "T" : "F");
}

void Client::WriteMapType() {
  ports_.browser.WriteField(field::kMapType,
                            menus_.At("mnuViewMapTypeArray", menus_.CheckedIndex("mnuViewMapTypeArray")).tag);
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
  ports_.view.ShowPointMarker(WorldToView(view_, point.x, point.y, ports_.view.BrowserSize()));
  boxTimer_->SetEnabled(true);
}

// The map's width, less a margin of 20 pixels on each side, stands for the time window. For each unit the
// point nearest to the instant under the pointer is described; the one nearest to the pointer on the map is
// marked.
void Client::ShowPointAtShare(int x) {
  constexpr int kMargin = 20;
  const PixelSize browser = ports_.view.BrowserSize();
  const double share = (x - kMargin) / static_cast<double>(browser.width - 2 * kMargin);
  if (closing_ || browser.width <= 2 * kMargin || share < 0 || share > 1) return HidePointInfos();
  const Millis utc = window_.start + static_cast<Millis>(share * static_cast<double>(window_.Length())) +
                     utcOffsetMinutes_ * kMinute;
  std::vector<std::string> texts;
  std::optional<std::pair<std::size_t, std::size_t>> marked;  // unit and point, from 1
  int leastDistance = 0;
  for (std::size_t k = 1; k <= store_.UnitCount(); ++k) {
    const auto index = store_.Track(k).NearestTo(utc);
    const auto facts = index ? FactsOf(k, static_cast<std::int32_t>(*index)) : std::nullopt;
    if (!facts) continue;
    texts.push_back(PointText(LabelOf(k), *facts, Length()));
    if (view_.UnitsPerPixel == 0) continue;
    const DataPoint& point = store_.Track(k).Points()[*index];
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
  const PixelSize browser = ports_.view.BrowserSize();
  const WorldPoint first = ViewToWorld(view_, a.x, a.y, browser);
  const WorldPoint second = ViewToWorld(view_, b.x, b.y, browser);
  WorldBox box;
  box.Widen(first.x, first.y);
  box.Widen(second.x, second.y);
  FitToBox(view_, box, browser);
  if (waitingFit_) {
    waitingFit_ = FitText(view_);
  } else {
    ports_.browser.WriteField(field::kFit, FitText(view_));
  }
}

void Client::OnBoxTick() {
  ports_.view.HidePointMarker();
  boxTimer_->SetEnabled(false);
}

}  // namespace pallomir
