#include "shell/visit_joints.h"

#include <algorithm>
#include <utility>

#include "base/number_format.h"
#include "base/whole_file.h"
#include "map/projection.h"

namespace pallomir {
namespace {

VisitTarget PlaceUnderPointer(const PageState& page) {
  const double lat = page.LastMouseLat / kPositionUnitsPerDegree;
  const double lng = page.LastMouseLng / kPositionUnitsPerDegree;
  VisitTarget target;
  target.name = FormatFixed(lat, 1, 6) + ", " + FormatFixed(lng, 1, 6);
  target.lat = lat;
  target.lng = lng;
  target.zoom = page.LastMouseZoom;
  target.area = [lat, lng, halfHeight = HalfHeightAt(page.LastMouseZoom)]() -> std::function<SearchArea()> {
    return [=] { return SearchArea::Around(lat, lng, halfHeight); };
  };
  return target;
}

}  // namespace

VisitJoints::VisitJoints(const JoinedRooms& rooms, ZoneJoints& zones)
    : rooms_(rooms),
      ports_(rooms.ports),
      view_(ports_.views.visits),
      zones_(zones),
      search_(ports_.loop, rooms.localClock, ports_.storage.folders.commonData / "pallomir" / "Data",
              {ports_.desktop.web, ports_.deployment.webSite},
              {.changed = [this] { view_.RefreshBeenHere(); },
               .failed =
                   [this](const std::string& message) {
                     ports_.desktop.questions.Tell(message, "Pallomir", Question::Icon::kError);
                   },
               .load = [this](const std::string& unitId, const TimeWindow& days) { Load(unitId, days); }}) {
  rooms.handlers.Set(Command::kBeenHere, [this](int) { OpenHere(); });
  zones_.beenIn = [this](ZoneOrdinal zone) { OpenInZone(zone); };
}

VisitJoints::~VisitJoints() = default;

void VisitJoints::Close() {
  rooms_.clickedAddress.Forget(this);
  search_.Close();
  view_.CloseBeenHere();
}

void VisitJoints::OpenHere() {
  Show(PlaceUnderPointer(rooms_.map.Page()));
  rooms_.clickedAddress.Ask(this, [this](const std::string& address) { search_.SetAddress(address); });
}

// The zones may change while the window is open: what is searched is the zone of this number and name.
void VisitJoints::OpenInZone(ZoneOrdinal zone) {
  rooms_.clickedAddress.Forget(this);
  const ZoneTree& tree = zones_.Tree();
  VisitTarget target;
  target.isZone = true;
  target.name = tree.At(zone).options.Description;
  target.area = [this, name = target.name, section = tree.Section(zone)]() -> std::function<SearchArea()> {
    const auto now = zones_.Tree().WithSection(section);
    if (!now || zones_.Tree().At(*now).options.Description != name) return {};
    return [tree = std::make_shared<const ZoneTree>(zones_.Tree()), zone = *now] {
      return SearchArea::OfZone(*tree, zone);
    };
  };
  if (target.name.empty()) target.name = "Zone " + tree.Section(zone);
  Show(std::move(target));
}

void VisitJoints::Show(VisitTarget target) {
  search_.Open(std::move(target), Units(), rooms_.pickers.Window());
  view_.ShowBeenHere(search_, {.save = [this] { Save(); },
                               .closed =
                                   [this] {
                                     rooms_.clickedAddress.Forget(this);
                                     search_.Close();
                                   }});
}

// In the colours of the map, where a unit is displayed.
std::vector<SearchedUnit> VisitJoints::Units() const {
  std::vector<SearchedUnit> units;
  for (const MobileUnit& unit : rooms_.units.List()) {
    const std::size_t k = rooms_.units.Book().EnabledPositionOf(unit.id);
    units.push_back({unit.id, unit.id + " - " + unit.description, UnitColour(k > 0 ? k : units.size() + 1)});
  }
  return units;
}

void VisitJoints::Load(const std::string& unitId, const TimeWindow& days) {
  const auto& list = rooms_.units.List();
  const auto unit = std::ranges::find(list, unitId, &MobileUnit::id);
  if (unit != list.end()) rooms_.units.EnableForLoad(static_cast<std::size_t>(unit - list.begin()) + 1);
  rooms_.pickers.Load(days);
}

void VisitJoints::Save() {
  view_.AskVisitsFile([this](const std::filesystem::path& file) {
    std::error_code error;
    if (!std::filesystem::exists(file, error)) return SaveAs(file);
    Question question;
    question.kind = Question::Kind::kYesNo;
    question.title = "Save Visits as CSV";
    question.text = file.string() + " is there already. Replace it?";
    ports_.desktop.questions.Ask(question, [this, file](const Answer& answer) {
      if (answer.yes) SaveAs(file);
    });
  });
}

void VisitJoints::SaveAs(const std::filesystem::path& file) {
  const auto error = std::make_shared<std::error_code>();
  ports_.loop.RunBeside(
      [error, file, csv = search_.Csv()] { *error = ReplaceFile(file, csv); },
      [this, error, file, life = std::weak_ptr<int>(life_)] {
        if (life.expired()) return;
        search_.Say(*error ? "The visits could not be saved as " + file.string() + ": " + error->message()
                           : "Saved as " + file.string());
      });
}

}  // namespace pallomir
