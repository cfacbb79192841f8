#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The rules of the zone file and of the zone query written down step by step, without a thought for speed or
/// for files too deep to recurse into.
namespace pallomir::oracles {

struct LiteralZone {
  std::vector<std::string> texts;                   // Spare, Description, DaysOfWeek, StartTime, EndTime
  std::vector<std::pair<double, double>> vertices;  // degrees, latitude first
  std::vector<std::unique_ptr<LiteralZone>> children;
  std::string section;
  int ordinal = 0;
};

struct LiteralTree {
  bool isAlerted = true;  // the top-level kind
  LiteralZone root;
  std::optional<int> illegalDepth;
};

/// Reads an undamaged file.
LiteralTree LiteralReadZones(std::string_view file);

struct LiteralAnswer {
  bool isAlert = false;
  int deepest = -1;  // ordinal
  std::string path;  // the descriptions, each followed by CR LF
};

LiteralAnswer LiteralQuery(const LiteralTree& tree, double lat, double lng);

}  // namespace pallomir::oracles
