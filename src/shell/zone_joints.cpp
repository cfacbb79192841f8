#include "shell/zone_joints.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <utility>

#include "base/number_format.h"
#include "map/page_fields.h"
#include "map/projection.h"
#include "zones/zone_path.h"

namespace pallomir {
namespace {

constexpr int kRestMilliseconds = 600;

// Demo zones start every time as they were delivered.
std::filesystem::path ZoneFileIn(const Folders& folders, bool isDemoMode, Trace& trace) {
  constexpr char kDemoFile[] = "ZoneMenus_Demo.txt";
  const std::filesystem::path folder = folders.commonData / "pallomir";
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  std::filesystem::remove(folder / kDemoFile, error);
  std::filesystem::copy_file(folders.application / kDemoFile, folder / kDemoFile, error);
  if (error) trace.Line("no demo zones: " + error.message());
  return folder / (isDemoMode ? kDemoFile : "ZoneMenus.txt");
}

WorldBox BoxOf(const ZoneBounds& bounds) {
  constexpr double kNearestToPole = 89.9;  // the poles have no place on the plane
  const auto y = [&](double lat) {
    return LatToWorldY(DegreesToPositionUnits(std::clamp(lat, -kNearestToPole, kNearestToPole)));
  };
  WorldBox box;
  box.Widen(LngToWorldX(DegreesToPositionUnits(bounds.minLng)), y(bounds.minLat));
  box.Widen(LngToWorldX(DegreesToPositionUnits(bounds.maxLng)), y(bounds.maxLat));
  return box;
}

// In the page's form, as its field says: "+0010-0001", pixels to the right and down.
std::string CrosshairMove(int number) {
  constexpr int kSteps[] = {10, 1, 50};
  const int step = kSteps[number / 4];
  const auto text = [](int pixels) { return (pixels < 0 ? "-" : "+") + FormatInteger(std::abs(pixels), 4); };
  switch (number % 4) {
    case 0:
      return text(-step) + text(0);
    case 1:
      return text(0) + text(-step);
    case 2:
      return text(step) + text(0);
    default:
      return text(0) + text(step);
  }
}

}  // namespace

ZoneJoints::ZoneJoints(const JoinedRooms& rooms)
    : ports_(rooms.ports),
      view_(ports_.views.zones),
      choices_(rooms.choices),
      menus_(rooms.menus),
      map_(rooms.map),
      pointerRest_(
          ports_.loop.CreateTimer("ZonePointerRest", kRestMilliseconds, [this] { OnPointerRests(); })) {
  HandleCommands(rooms.handlers);
  JoinPage(map_.Listeners());
}

void ZoneJoints::Open() {
  zones_ = std::make_unique<Zones>(
      view_, ports_.loop, ports_.desktop.questions, ports_.trace,
      ZoneFileIn(ports_.storage.folders, choices_.demoMode.Value(), ports_.trace), ZonesHost());
  transfer_ = std::make_unique<ZoneTransfer>(view_, ports_.loop, ports_.desktop.questions, *zones_);
  list_ = std::make_unique<ZoneListModel>(zones_->Tree());
  list_->inKilometers = [this] { return choices_.unitOfMeasure.Value() == 1; };
  list_->mayChange = [this] { return zones_->CanChange(); };
  zones_->LoadZones();
}

Zones::Host ZoneJoints::ZonesHost() {
  Zones::Host host;
  host.write = [this](const char* field, const std::string& text) { Write(field, text); };
  host.changed = [this] { ShowMenus(); };
  host.zoomTo = [this](const ZoneBounds& bounds) { map_.ZoomTo(BoxOf(bounds)); };
  host.beenIn = beenIn;
  host.endProgram = [this] { ports_.desktop.window.Close(); };
  return host;
}

void ZoneJoints::JoinPage(MapBridge::Host& host) {
  host.isTopLevelAlerted = [this] { return zones_ && zones_->Tree().TopLevelKind() == ZoneKind::kAlerted; };
  host.shapeFinished = [this](const std::string& payload) {
    if (zones_) zones_->OnShapeFinished(payload);
  };
  host.shapeCancelled = [this] {
    if (zones_) zones_->OnShapeCancelled();
  };
  host.shapeClosable = [this] {
    if (zones_) zones_->OnShapeClosable();
  };
}

void ZoneJoints::Close() {
  PointerLeft();
  if (transfer_) transfer_->Cancel();
  if (zones_) zones_->Close();
  view_.Close();
}

void ZoneJoints::HandleCommands(CommandHandlers& handlers) {
  const auto handle = [&](Command command, void (Zones::*act)()) {
    handlers.Set(command, [this, act](int) {
      if (zones_) (*zones_.*act)();
    });
  };
  handle(Command::kAddZone, &Zones::Add);
  handle(Command::kSwapZoneKind, &Zones::SwapTopLevelKind);
  handle(Command::kDeleteAllZones, &Zones::DeleteAll);
  handle(Command::kUndoZones, &Zones::Undo);
  handle(Command::kRedoZones, &Zones::Redo);
  handle(Command::kFinishZone, &Zones::FinishShape);
  handle(Command::kCancelZone, &Zones::CancelShape);
  handle(Command::kDeleteVertex, &Zones::TellHowToDeleteVertices);
  handlers.Set(Command::kZoneList, [this](int) { ShowList(); });
  handlers.Set(Command::kExportZones, [this](int) {
    if (transfer_) transfer_->Export();
  });
  handlers.Set(Command::kImportZones, [this](int) {
    if (transfer_) transfer_->Import();
  });
  HandleDrawing(handlers);
  const auto handleOfZone = [&](Command command, ZoneOperation operation) {
    handlers.Set(command, [this, operation](int zone) {
      if (zones_) zones_->Run(operation, static_cast<ZoneOrdinal>(zone));
    });
  };
  handleOfZone(Command::kAddSubzone, ZoneOperation::kAdd);
  handleOfZone(Command::kDeleteZone, ZoneOperation::kDel);
  handleOfZone(Command::kEditZone, ZoneOperation::kMod);
  handleOfZone(Command::kZoomToZone, ZoneOperation::kZoom);
  handleOfZone(Command::kBeenInZone, ZoneOperation::kBeen);
}

void ZoneJoints::HandleDrawing(CommandHandlers& handlers) {
  const auto handle = [&](Command command, const char* field, std::string (*text)(int)) {
    handlers.Set(command, [this, field, text](int number) {
      if (IsDrawing()) Write(field, text(number));
    });
  };
  handle(Command::kSetCorner, field::kZoneCorner, [](int free) -> std::string { return free ? "A" : " "; });
  handle(Command::kUndoCorner, field::kZoneUndo, [](int) -> std::string { return " "; });
  handle(Command::kMoveCrosshair, field::kZoneCrosshair, CrosshairMove);
  handle(Command::kGoToCorner, field::kZoneCrosshair,
         [](int next) -> std::string { return next ? "N" : "P"; });
}

ZoneMenuState ZoneJoints::MenuState() const {
  ZoneMenuState state;
  state.tree = &zones_->Tree();
  state.mayChange = zones_->CanChange();
  state.canUndo = zones_->CanUndo();
  state.canRedo = zones_->CanRedo();
  state.canSearch = beenIn != nullptr;
  state.popup = zones_->PopupEntries();
  return state;
}

void ZoneJoints::ShowMenus() {
  ShowZones(menus_, MenuState());
  view_.RefreshList();
  zonesChanged();
}

void ZoneJoints::ShowList() {
  if (!zones_) return;
  ZonesView::ListActions actions;
  actions.zoom = [this](ZoneOrdinal zone) { zones_->Run(ZoneOperation::kZoom, zone); };
  actions.remove = [this](ZoneOrdinal zone) { zones_->Run(ZoneOperation::kDel, zone); };
  actions.rename = [this](ZoneOrdinal zone, const std::string& name) { zones_->Rename(zone, name); };
  view_.ShowList(*list_, std::move(actions));
}

void ZoneJoints::OnPageReady() {
  if (zones_) zones_->OnPageReady();
}

void ZoneJoints::OnPageLost() {
  if (zones_) zones_->OnPageLost();
}

void ZoneJoints::PointerMoved(double lat, double lng) {
  PointerLeft();
  if (!zones_ || zones_->IsDrawing() || zones_->Tree().IsEmpty()) return;
  pointerLat_ = lat;
  pointerLng_ = lng;
  pointerRest_->SetEnabled(true);
}

void ZoneJoints::PointerLeft() {
  pointerRest_->SetEnabled(false);
  view_.HidePath();
}

void ZoneJoints::OnPointerRests() {
  pointerRest_->SetEnabled(false);
  const std::string path = ZonePathText(zones_->Tree(), zones_->ZoneAt(pointerLat_, pointerLng_));
  if (!path.empty()) view_.ShowPath(path);
}

void ZoneJoints::OfferZoneAt(double lat, double lng) {
  if (zones_) ShowZoneUnderPointer(menus_, MenuState(), zones_->ZoneAt(lat, lng));
}

void ZoneJoints::OfferNone() {
  if (zones_) ShowZoneUnderPointer(menus_, MenuState(), ZoneTree::kNone);
}

}  // namespace pallomir
