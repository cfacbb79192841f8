#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "reports/been_here.h"
#include "reports/visits_view.h"
#include "shell/joint.h"
#include "shell/zone_joints.h"

namespace pallomir {

/// The search for visits in the program: "Been Here?" joined to the map's popup, the zones' entries, the
/// page's addresses, the time window and the units.
class VisitJoints final : public Joint {
 public:
  /// Sets the handler of the command and of the zones' entries.
  VisitJoints(const JoinedRooms& rooms, ZoneJoints& zones);
  ~VisitJoints() override;

  void Close() override;

 private:
  void OpenHere();
  void OpenInZone(ZoneOrdinal zone);
  void Show(VisitTarget target);
  std::vector<SearchedUnit> Units() const;
  void Load(const std::string& unitId, const TimeWindow& days);
  void Save();
  void SaveAs(const std::filesystem::path& file);

  JoinedRooms rooms_;
  const Ports& ports_;
  VisitsView& view_;
  ZoneJoints& zones_;
  BeenHere search_;
  std::shared_ptr<int> life_ = std::make_shared<int>();  // ends with this object
};

}  // namespace pallomir
