#include "shell/point_table_joints.h"

#include <optional>

#include "base/whole_file.h"
#include "map/projection.h"
#include "ui/replace_question.h"

namespace pallomir {

PointTableJoints::PointTableJoints(const JoinedRooms& rooms)
    : rooms_(rooms),
      view_(rooms.ports.views.pointTables),
      tables_(view_, rooms.points, rooms.map.View(), rooms.marks, rooms.clickedAddress, TablesHost()) {
  rooms.handlers.Set(Command::kNearby, [this](int) {
    const PageState& page = rooms_.map.Page();
    const WorldPoint clicked{page.RightClickX, page.RightClickY};
    tables_.OpenNearby(page.IsRightClicked ? std::optional(clicked) : std::nullopt);
  });
  rooms.handlers.Set(Command::kMaxSpeed, [this](int) { tables_.OpenFastest(); });
  rooms.handlers.Set(Command::kCloseTable, [this](int) { return tables_.Close(); });
}

PointTables::Host PointTableJoints::TablesHost() {
  PointTables::Host host;
  host.isDrawing = [this] { return rooms_.map.IsRebuilding(); };
  host.fastest = [this]() -> const FastestPoints& { return rooms_.map.Tiles().Fastest(); };
  host.centre = [this](WorldPoint place) {
    rooms_.map.SendPan(WorldYToLat(place.y), WorldXToLng(place.x));
    rooms_.marks.ShowPlace(place);
  };
  host.save = [this](const std::string& csv) { Save(csv); };
  return host;
}

void PointTableJoints::OnReload() {
  tables_.Close();
  tables_.OnPointsMove();
}

void PointTableJoints::Save(const std::string& csv) {
  view_.AskCsvFile([this, csv](const std::filesystem::path& file) {
    AskToReplace(rooms_.ports.desktop.questions, file, "Save Table as CSV",
                 [this, file, csv] { Write(file, csv); });
  });
}

void PointTableJoints::Write(const std::filesystem::path& file, const std::string& csv) {
  if (const std::error_code error = ReplaceFile(file, csv))
    rooms_.ports.desktop.questions.Tell(file.string() + " can't be written: " + error.message());
}

}  // namespace pallomir
