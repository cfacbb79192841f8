#include "map/map_bridge.h"

#include <algorithm>
#include <string>
#include <utility>
#include <variant>

#include "map/page_fields.h"
#include "map/projection.h"

namespace pallomir {
namespace {

template <class Callback, class... Arguments>
void Tell(const Callback& callback, const Arguments&... arguments) {
  if (callback) callback(arguments...);
}

}  // namespace

MapBridge::MapBridge(Browser& browser, EventLoop& loop, Trace& trace, const Folders& folders,
                     std::string webSite, MapView& view, std::function<void(const std::string&)> showError,
                     Host host)
    : browser_(browser),
      form_(browser),
      loop_(loop),
      trace_(trace),
      application_(folders.application),
      webSite_(std::move(webSite)),
      view_(view),
      showError_(std::move(showError)),
      host_(std::move(host)),
      tiles_(FoldersOfTiles(folders), trace) {
  const auto create = [&](const char* name, int interval, void (MapBridge::*tick)()) {
    return loop.CreateTimer(name, interval, [this, tick] { (this->*tick)(); });
  };
  tmrTiles_ = create("tmrTiles", 0, &MapBridge::OnTilesTick);
  splashPause_ = create("SplashPause", 500, &MapBridge::OnReady);
  pageRetry_ = create("PageRetry", 5000, &MapBridge::AskForPage);
}

MapBridge::~MapBridge() {
  browser_.beforeNavigate = nullptr;
  browser_.pageLost = nullptr;
}

void MapBridge::Open() {
  browser_.beforeNavigate = [this](const std::string& url) { return BeforeNavigate(url); };
  browser_.pageLost = [this](const std::string& reason) { OnLost(reason); };
  browser_.Navigate("about:blank");
  browser_.Navigate(application_ / "blank_blue.html");
  AskForPage();
}

void MapBridge::OpenIfLost() {
  if (isLost_) AskForPage();
}

void MapBridge::AskForPage() {
  pageRetry_->SetEnabled(false);
  isLost_ = false;
  const PixelSize browser = host_.browserSize();
  addressSize_ = PageMapSize(browser);
  const std::string address = MapPageAddress(webSite_, browser);
  trace_.Line("map page " + address);
  browser_.Navigate(address);
}

void MapBridge::OnLost(const std::string& reason) {
  if (host_.isClosing()) return;
  trace_.Line("map page lost: " + reason);
  page_.MapCreated = false;
  fit_.PageLost(ShownBox(view_, host_.browserSize()));
  waitingQuestions_.clear();  // the next page asks its own
  pageRetry_->SetEnabled(true);
  host_.lost();
  if (std::exchange(isLost_, true)) return;  // what stands in for the page is missing too
  browser_.Navigate(LostPageAddress(application_, webSite_, reason));
}

void MapBridge::Close() {
  for (Timer* timer : {tmrTiles_.get(), splashPause_.get(), pageRetry_.get()}) timer->SetEnabled(false);
  browser_.Stop();
}

bool MapBridge::BeforeNavigate(const std::string& url) {
  const std::string prefix = CommandPrefix(webSite_);
  if (!url.starts_with(prefix)) return false;
  // The browser waits for the answer, and what a command does may take long: it is run afterwards, in order.
  loop_.Post([this, text = url.substr(prefix.size())] { RunCommand(text); });
  return true;
}

void MapBridge::RunCommand(const std::string& text) {
  if (host_.isClosing()) return;
  const PageCommand command = ParsePageCommand(text);
  if (std::holds_alternative<page::Malformed>(command)) {
    trace_.Line("page command left out, its numbers are none: " + text.substr(0, 80));
  }
  std::visit([this](const auto& parsed) { On(parsed); }, command);
}

void MapBridge::On(const page::Panned& pan) {
  SetCentre(view_, pan.lat, pan.lng);
  host_.viewMoved();
}

void MapBridge::On(const page::Status& status) {
  constexpr int kMapCreated = 1;
  constexpr int kLastLine = 17;
  constexpr int kReady = 99;
  if (status.number >= 1 && status.number <= kLastLine) host_.reached(status.number);
  if (status.number == kReady) splashPause_->SetEnabled(true);
  if (status.number != kMapCreated) return;
  page_.MapCreated = true;
  // The window may have changed since the address was made.
  if (PageMapSize(host_.browserSize()) != addressSize_) SendSize();
  if (const auto box = fit_.MapCreated()) SendFit({true, *box});
}

void MapBridge::On(const page::PopupWithoutPlace&) { Tell(host_.menuWanted); }

void MapBridge::On(const page::PopupAtPlace& click) {
  page_.IsRightClicked = true;
  TakeMove();
  page_.RightClickX = LngToWorldX(click.lng);
  page_.RightClickY = LatToWorldY(click.lat);
  Tell(host_.menuWantedAt, click.lat / kPositionUnitsPerDegree, click.lng / kPositionUnitsPerDegree);
}

void MapBridge::On(const page::GeocodeAnswer& answer) { Tell(host_.addressFound, answer.text); }

void MapBridge::On(const page::ZoneEdit& edit) {
  switch (edit.sub) {
    case 'F':
      return Tell(host_.shapeFinished, edit.payload);
    case 'C':
      return Tell(host_.shapeCancelled);
    case '3':
      return Tell(host_.shapeClosable);
    default:
      showError_("System Error 3907");
  }
}

void MapBridge::On(const page::MouseMoved& move) {
  page_.MouseMoveToggle = !page_.MouseMoveToggle;
  skippedMove_ = move;
  if (!page_.MouseMoveToggle) return;
  TakeMove();
  Tell(host_.pointerMoved, ViewPoint{move.x, move.y});
}

// The page reports where the pointer is before it reports a click: that report always counts.
void MapBridge::TakeMove() {
  if (!skippedMove_) return;
  page_.LastMouseLat = skippedMove_->lat;
  page_.LastMouseLng = skippedMove_->lng;
  page_.LastMouseZoom = skippedMove_->zoom;
  skippedMove_.reset();
}

void MapBridge::OnReady() {
  splashPause_->SetEnabled(false);
  trace_.Line(kPageReadyLine);
  form_.Restore(host_.choices());
  host_.ready();
}

void MapBridge::On(const page::Zoomed& zoomed) { ChangeZoom(zoomed.zoom, "Zoom"); }

void MapBridge::ChangeZoom(int zoom, const char* origin) {
  trace_.Line("ZoomChange begin (NewZoom = " + std::to_string(zoom) + ", Origin = " + origin + ")...");
  const ZoomChange change = SetTileZoom(view_, zoom);
  if (change == ZoomChange::kNone) return;
  if (change == ZoomChange::kChanged || rebuildOwed_) Rebuild();
  host_.viewMoved();
}

void MapBridge::On(const page::TileQuestion& question) {
  if (IsTileZoom(question.zoom)) ChangeZoom(question.zoom, "NewTile");
  if (question.kind == page::TileQuestion::Kind::kUnknown) return;
  if (!IsRebuilding()) return Answer(question);
  // The page waits for each answer and asks again after two seconds: more than a few come from no page of
  // ours.
  constexpr std::size_t kMostWaiting = 64;
  if (waitingQuestions_.size() == kMostWaiting) waitingQuestions_.pop_front();
  waitingQuestions_.push_back(question);
}

void MapBridge::Answer(const page::TileQuestion& question) {
  const bool isZoom = IsTileZoom(question.zoom);
  const std::string suffix = isZoom ? question.suffix : std::string();
  if (question.kind == page::TileQuestion::Kind::kTrack) {
    const std::string path = tiles_.TrackTilePath(suffix);
    form_.AnswerTrackTile(path);
    if (!path.ends_with(kBlankTile)) trace_.Line("track tile " + suffix + " handed to the page");
  } else {
    form_.AnswerZoneTile(isZoom ? tiles_.ZoneTilePath(suffix, host_.isTopLevelAlerted())
                                : tiles_.TrackTilePath(""));
  }
}

void MapBridge::Rebuild() {
  TrackDrawing drawing = host_.drawing();
  drawing.CentreX = view_.CentreX;
  drawing.CentreY = view_.CentreY;
  drawing.UnitsPerPixel = view_.UnitsPerPixel;
  drawing.TileZoom = view_.TileZoom;
  drawing.browser = host_.browserSize();
  const bool isZoomKnown = view_.TileZoom >= 0;
  const auto hasPoints = [](const auto& unit) { return !unit.empty(); };
  rebuildOwed_ = !isZoomKnown && std::any_of(drawing.units.begin(), drawing.units.end(), hasPoints);
  tiles_.Begin(isZoomKnown ? std::optional(std::move(drawing)) : std::nullopt);
  tmrTiles_->SetEnabled(true);
}

void MapBridge::OnTilesTick() {
  const auto end = tiles_.Continue();
  if (!end) return;
  tmrTiles_->SetEnabled(false);
  if (end->error) {
    waitingQuestions_.clear();
    host_.rebuildFailed(*end->error);
  } else {
    notDrawn_ = rebuildOwed_;
    trace_.Line("track tiles " + tiles_.GenerationText() + " written");
    form_.AnnounceGeneration(tiles_.GenerationText());
  }
  const bool isFit = fit_.IsBeingDrawn();
  if (const auto due = fit_.Drawn(page_.MapCreated)) SendFit(*due);
  if (isFit) trace_.Line("...end Fit");
  host_.rebuildEnded();
  for (const auto& question : std::exchange(waitingQuestions_, {})) Answer(question);
}

void MapBridge::DropRebuild() {
  tiles_.Drop();
  tmrTiles_->SetEnabled(false);
}

void MapBridge::FitToData(const WorldBox& box) {
  fit_.Ask(box);
  DrawFit(box);
}

void MapBridge::FitToNewData(const WorldBox& box) {
  fit_.AskForData(box);
  DrawFit(box);
}

void MapBridge::DrawFit(const WorldBox& box) {
  view_.DataBox = box;
  FitToBox(view_, box, host_.browserSize());
  Rebuild();
}

void MapBridge::ZoomTo(const WorldBox& box) {
  FitToBox(view_, box, host_.browserSize());
  if (!fit_.Redirect(box)) form_.Fit(view_);
}

// Made again for the size and the centre that the map has now: the window may have changed, or the page
// reported another centre, since the box was asked for.
void MapBridge::SendFit(const PendingFit::Due& due) {
  FitToBox(view_, due.box, host_.browserSize());
  if (due.isFirst) {
    form_.FirstFit(view_);
  } else {
    form_.Fit(view_);
  }
}

void MapBridge::SendPan(double lat, double lng) { form_.Pan(lat, lng); }

void MapBridge::SendSize() {
  const PixelSize map = PageMapSize(host_.browserSize());
  trace_.Line("map size X=" + std::to_string(map.width) + "&Y=" + std::to_string(map.height));
  form_.SetSize(map);
}

void MapBridge::SendCentre() {
  if (view_.HasCentre) SendPan(view_.CentreLat, view_.CentreLng);
}

}  // namespace pallomir
