#pragma once

#include <filesystem>
#include <string>

#include "reports/point_tables.h"
#include "shell/joint.h"

namespace pallomir {

/// The tables of data points in the program: joined to their commands, the map and the file that they are
/// saved to.
class PointTableJoints final : public Joint {
 public:
  explicit PointTableJoints(const JoinedRooms& rooms);

  void Close() override { tables_.Close(); }
  void OnReload() override;
  void OnLaidOut() override { tables_.Close(); }

  PointTables& Tables() { return tables_; }

 private:
  PointTables::Host TablesHost();
  void Save(const std::string& csv);
  void Write(const std::filesystem::path& file, const std::string& csv);

  JoinedRooms rooms_;
  PointTableView& view_;
  PointTables tables_;
};

}  // namespace pallomir
