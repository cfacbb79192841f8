#include "zones/zones.h"

#include <algorithm>
#include <utility>

#include "map/page_fields.h"
#include "zones/zone_edits.h"
#include "zones/zone_exchange.h"
#include "zones/zone_neighbours.h"
#include "zones/zone_path.h"
#include "zones/zone_payload.h"

namespace pallomir {
namespace {

constexpr char kTopLevel[] = "X";
constexpr char kEditShape[] = "Edit Shape";
constexpr char kCancel[] = "Cancel";

// A shape of fewer corners has no area.
constexpr std::size_t kLeastVertices = 3;

}  // namespace

Zones::Zones(ZonesView& view, EventLoop& loop, QuestionQueue& questions, Trace& trace,
             std::filesystem::path file, Host host)
    : view_(view),
      questions_(questions),
      trace_(trace),
      host_(std::move(host)),
      store_(std::move(file)),
      sender_(loop, store_.Tree(), host_.write) {}

void Zones::LoadZones() {
  if (isImporting_) return ShowList();  // what is being imported stands on this list
  const ZoneStore::Loaded loaded = store_.Load();
  if (loaded.illegalDepth) {
    questions_.Tell("Internal Error 9703: NestingLevel = " + std::to_string(*loaded.illegalDepth), "Pallomir",
                    Question::Icon::kError, [this](const Answer&) { host_.endProgram(); });
    return;
  }
  if (!loaded.message.empty()) questions_.Tell(loaded.message, "Pallomir", Question::Icon::kExclamation);
  ShowList();
}

void Zones::ShowList() {
  host_.changed();
  if (isPageThere_) sender_.Start();
}

std::string Zones::PathText(ZoneOrdinal zone, const std::string& end) const {
  std::vector<ZoneOrdinal> path;
  for (; zone != ZoneTree::kNone; zone = Tree().At(zone).parent) path.push_back(zone);
  std::string text;
  for (auto at = path.rbegin(); at != path.rend(); ++at) text += Tree().At(*at).options.Description + end;
  return text;
}

Zones::Reference Zones::ReferenceTo(ZoneOrdinal zone) const {
  if (zone == ZoneTree::kNone) return {kTopLevel, {}};
  return {Tree().Section(zone), Tree().ContentOf(zone)};
}

std::optional<ZoneOrdinal> Zones::Find(const Reference& reference) {
  if (reference.section == kTopLevel) return ZoneTree::kNone;
  const auto zone = Tree().WithSection(reference.section);
  if (zone) {
    const ZoneContent content = Tree().ContentOf(*zone);
    if (content.options == reference.content.options && content.vertices == reference.content.vertices)
      return zone;
  }
  questions_.Tell("The list of zones has changed meanwhile: zone " + reference.section +
                  " is no longer the one that was meant. Nothing was changed.");
  return std::nullopt;
}

bool Zones::MayChange() {
  if (drawing_) return false;
  if (isImporting_) {
    questions_.Tell("Zones are being imported. Try again when they are there.");
    return false;
  }
  if (store_.WhyReadOnly().empty()) return true;
  questions_.Tell(store_.WhyReadOnly(), "Pallomir", Question::Icon::kExclamation);
  return false;
}

bool Zones::MayDraw() {
  if (!MayChange()) return false;
  if (!isPageThere_) questions_.Tell("Zones can be drawn when the map is there.");
  return isPageThere_;
}

bool Zones::Stored(const std::string& problem) {
  if (problem.empty()) {
    ShowList();
  } else {
    questions_.Tell(problem, "Pallomir", Question::Icon::kError);
  }
  return problem.empty();
}

void Zones::Add() {
  if (MayDraw()) AskForNewZone(ZoneTree::kNone);
}

void Zones::Run(ZoneOperation operation, ZoneOrdinal zone) {
  if (zone >= Tree().Count()) return;
  const ZoneTree::Node& node = Tree().At(zone);
  if (operation == ZoneOperation::kZoom) {
    if (!node.bounds.IsEmpty()) host_.zoomTo(node.bounds);
  } else if (operation == ZoneOperation::kBeen) {
    if (host_.beenIn) host_.beenIn(zone);
  } else if (operation == ZoneOperation::kDel) {
    if (MayChange()) AskToDelete(zone);
  } else if (!MayDraw()) {
    return;
  } else if (operation == ZoneOperation::kAdd) {
    AskForNewZone(zone);
  } else {
    AskForChange(zone);
  }
}

void Zones::AskForNewZone(ZoneOrdinal parent) {
  view_.Execute(
      ZonesView::OptionsMode::kAdd, ZoneOptionsModel(),
      [this, reference = ReferenceTo(parent)](const std::string& button, const ZoneOptions& options) {
        OnAddAnswer(button, options, reference);
      });
}

void Zones::OnAddAnswer(const std::string& button, const ZoneOptions& options, const Reference& parent) {
  if (button.empty() || button == kCancel) return questions_.Tell("Zone add canceled");
  if (button != kEditShape)
    return questions_.Tell(parent.section == kTopLevel ? "Internal error 2778" : "Internal Error 9336");
  if (!MayDraw() || !Find(parent)) return;
  Draw({ZoneOperation::kAdd, parent, options}, {.cancel = true});
  host_.write(field::kZoneNew, " ");
}

void Zones::AskForChange(ZoneOrdinal zone) {
  view_.Execute(ZonesView::OptionsMode::kMod, ZoneOptionsModel(Tree().At(zone).options),
                [this, reference = ReferenceTo(zone)](const std::string& button, const ZoneOptions& options) {
                  OnModAnswer(button, options, reference);
                });
}

void Zones::OnModAnswer(const std::string& button, const ZoneOptions& options, const Reference& zone) {
  if (button.empty() || button == kCancel) return questions_.Tell("Zone edit canceled");
  if (button != kEditShape) return questions_.Tell("Internal Error 9337");
  if (!MayDraw()) return;
  const auto place = Find(zone);
  if (!place) return;
  Draw({ZoneOperation::kMod, zone, options}, {.finish = true, .cancel = true, .deleteVertex = true});
  host_.write(field::kZoneEdit, std::to_string(*place));
}

void Zones::Draw(Drawing drawing, const ZonePopupEntries& entries) {
  sender_.Finish();  // the page counts its zones
  drawing_ = std::move(drawing);
  popup_ = entries;
  host_.changed();
}

void Zones::EndDrawing() {
  drawing_.reset();
  popup_ = {};
}

void Zones::Ask(const std::string& text, std::function<void()> then) {
  Question question;
  question.kind = Question::Kind::kOkCancel;
  question.icon = Question::Icon::kQuestion;
  question.title = "Delete Zone";
  question.text = text;
  questions_.Ask(question, [this, then = std::move(then)](const Answer& answer) {
    if (!answer.yes) return questions_.Tell("Delete canceled");
    if (MayChange()) then();
  });
}

// Asked again while the box is open, it stands for the zone that was chosen last.
void Zones::AskToDelete(ZoneOrdinal zone) {
  toDelete_ = ReferenceTo(zone);
  Ask("Are you sure you want to delete this (sub)zone and all subzones under it?", [this] {
    if (const auto place = Find(toDelete_)) Stored(store_.Save(WithZoneDeleted(Tree(), *place)));
  });
}

void Zones::DeleteAll() {
  if (!MayChange()) return;
  Ask("Are you sure you want to delete all zones and their subzones?",
      [this] { Stored(store_.DeleteAll()); });
}

void Zones::SwapTopLevelKind() {
  if (MayChange()) Stored(store_.Save(WithKindSwapped(Tree())));
}

void Zones::Undo() {
  if (CanUndo() && MayChange()) Stored(store_.Undo());
}

void Zones::Redo() {
  if (CanRedo() && MayChange()) Stored(store_.Redo());
}

void Zones::Rename(ZoneOrdinal zone, const std::string& description) {
  if (zone >= Tree().Count() || !MayChange()) return;
  ZoneOptionsModel model(Tree().At(zone).options);
  model.SetDescription(description);
  ZoneContent content = Tree().ContentOf(zone);
  if (model.Description().empty() || model.Description() == content.options.Description) return;
  content.options.Description = model.Description();
  Stored(store_.Save(WithZoneChanged(Tree(), zone, std::move(content))));
}

std::shared_ptr<PendingZones> Zones::BeginImport(const ZoneTree& zones, bool replace) {
  if (!MayChange()) return nullptr;
  isImporting_ = true;
  host_.changed();
  // One that was cancelled may still be at its file.
  return store_.Begin(replace ? zones : WithZonesAppended(Tree(), zones),
                      ".import" + std::to_string(++imports_));
}

void Zones::EndImport(PendingZones& pending) {
  isImporting_ = false;
  if (!Stored(store_.Commit(pending))) host_.changed();
}

void Zones::CancelImport() {
  isImporting_ = false;
  host_.changed();
}

void Zones::FinishShape() {
  if (drawing_) host_.write(field::kZoneFinish, " ");
}

void Zones::CancelShape() {
  if (drawing_) host_.write(field::kZoneCancel, " ");
}

void Zones::TellHowToDeleteVertices() {
  questions_.Tell(
      "To delete a vertex, drag it over one of the two adjacent vertices tied to it.\r\n"
      "Note: a zone must have at least four vertices for vertex deletion to be permitted.");
}

void Zones::OnPageReady() {
  OnPageLost();
  isPageThere_ = true;
  LoadZones();
}

void Zones::OnPageLost() {
  sender_.Stop();
  isPageThere_ = false;
  if (!drawing_) return;
  EndDrawing();
  host_.changed();
  questions_.Tell("The map was lost while a zone was drawn. The drawing is gone; no zone was changed.");
}

void Zones::OnShapeFinished(const std::string& payload) {
  if (!drawing_) return trace_.Line("a shape that nobody asked for was left out");
  const auto vertices = ParseShape(payload);
  if (!vertices) return questions_.Tell("The map sent a shape that can't be read. It was not saved.");
  const bool keepsShape = vertices->empty() && drawing_->operation == ZoneOperation::kMod;
  if (vertices->size() < kLeastVertices && !keepsShape)
    return questions_.Tell("A zone needs at least three corners. Go on drawing, or cancel.");
  SaveShape(keepsShape ? drawing_->target.content.vertices : *vertices);
}

// What could not be stored stays on the page, for another try.
void Zones::SaveShape(const std::vector<ZoneVertex>& vertices) {
  const Drawing drawing = *drawing_;
  const auto place = Find(drawing.target);
  if (!place) return;
  const bool isNew = drawing.operation == ZoneOperation::kAdd;
  ZoneContent content{drawing.options, vertices};
  const std::string problem = store_.Save(isNew ? WithZoneAdded(Tree(), *place, std::move(content))
                                                : WithZoneChanged(Tree(), *place, std::move(content)));
  if (problem.empty()) EndDrawing();
  if (!Stored(problem)) return;
  const ZoneOrdinal saved = isNew ? Tree().ChildrenOf(*place).back() : *place;
  std::string remarks;
  for (const std::string& remark : RemarksOn(Tree(), saved))
    remarks += (remarks.empty() ? "" : "\n") + remark;
  if (!remarks.empty()) questions_.Tell(remarks, "Pallomir", Question::Icon::kInformation);
}

void Zones::OnShapeCancelled() {
  questions_.Tell("Zone Edit Canceled");
  EndDrawing();
  LoadZones();
}

void Zones::OnShapeClosable() {
  if (!drawing_) return;
  popup_.finish = popup_.deleteVertex = true;
  host_.changed();
}

}  // namespace pallomir
