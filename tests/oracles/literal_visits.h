#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

/// The rule of the search for visits in data files, written down step by step.
namespace pallomir::oracles {

struct LiteralVisit {
  std::size_t unit = 0;
  std::uint32_t entry = 0;
  std::uint32_t exit = 0;
  std::uint32_t records = 0;
};

struct LiteralSearch {
  std::vector<LiteralVisit> visits;  // as they are listed
  int error = 0;                     // 65387, 776143 or none
};

struct LiteralQuestion {
  std::vector<std::string> units;
  std::function<bool(double lat, double lng)> isInside;  // degrees
  std::uint32_t first = 0;
  std::uint32_t last = 0x7FFFFFFF;
  std::size_t limit = 500;
};

/// Nobody changes the folder meanwhile.
LiteralSearch LiteralVisits(const std::filesystem::path& folder, const LiteralQuestion& question);

}  // namespace pallomir::oracles
