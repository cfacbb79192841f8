#include "oracles/literal_visits.h"

#include <algorithm>

#include "fakes/temporary_folder.h"

namespace pallomir::oracles {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> NamesIn(const fs::path& folder) {
  std::vector<std::string> names;
  if (!fs::exists(folder)) return names;
  for (const auto& entry : fs::directory_iterator(folder))
    if (entry.is_regular_file()) names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

std::uint32_t TimeOf(ByteView file, std::size_t record) {
  return ReadBigEndian32(file, 14 * record) & 0x7FFFFFFF;
}

class Search {
 public:
  Search(const fs::path& folder, const VisitQuery& query) : folder_(folder), query_(query) {
    for (unit_ = 0; unit_ < query.unitIds.size() && result.error == 0; ++unit_) SearchUnit();
    std::stable_sort(result.visits.begin(), result.visits.end(),
                     [](const auto& a, const auto& b) { return a.exit > b.exit; });
    if (result.visits.size() > query.limit) result.visits.resize(query.limit);
  }

  LiteralSearch result;

 private:
  void SearchUnit() {
    previous_ = 0x7FFFFFFF;
    isPast_ = false;
    std::vector<std::string> names = NamesIn(folder_ / query_.unitIds[unit_]);
    std::reverse(names.begin(), names.end());
    for (const std::string& name : names) {
      if (result.error != 0 || isPast_) break;
      const std::string content = fakes::ReadFile(folder_ / query_.unitIds[unit_] / name);
      if (content.size() > 10080 || content.size() % 14 != 0) result.error = 65387;
      if (result.error != 0) break;
      if (content.empty()) continue;
      if (IsFull(TimeOf(AsBytes(content), content.size() / 14 - 1))) break;
      SearchFile(AsBytes(content));
    }
    if (isOpen_) End();
  }

  bool IsFull(std::uint32_t newest) const {
    const auto listed = std::count_if(result.visits.begin(), result.visits.end(), [&](const Visit& visit) {
      return visit.unit == unit_ || visit.exit >= newest;
    });
    return !isOpen_ && static_cast<std::size_t>(listed) >= query_.limit;
  }

  void SearchFile(ByteView file) {
    for (std::size_t record = file.size() / 14; record-- > 0 && result.error == 0 && !isPast_;) {
      const std::uint32_t time = TimeOf(file, record);
      if (time > previous_) {
        result.error = 776143;
      } else if (time < query_.span.first) {
        isPast_ = true;
      } else if (time <= query_.span.last) {
        Examine(time,
                query_.area.Contains(static_cast<std::int32_t>(ReadBigEndian32(file, 14 * record + 5)),
                                     static_cast<std::int32_t>(ReadBigEndian32(file, 14 * record + 9))));
      }
      previous_ = time;
    }
  }

  void Examine(std::uint32_t time, bool isInside) {
    isPast_ = isInside && IsFull(time);
    if (isPast_) return;
    if (isInside && !isOpen_) open_ = {unit_, time, time, 0};
    if (isInside) {
      open_.entry = time;
      ++open_.records;
    } else if (isOpen_) {
      End();
    }
    isOpen_ = isInside;
  }

  void End() {
    result.visits.push_back(open_);
    isOpen_ = false;
  }

  const fs::path& folder_;
  const VisitQuery& query_;
  std::size_t unit_ = 0;
  std::uint32_t previous_ = 0;
  bool isPast_ = false;
  bool isOpen_ = false;
  Visit open_;
};

}  // namespace

LiteralSearch LiteralVisits(const fs::path& folder, const VisitQuery& query) {
  return Search(folder, query).result;
}

}  // namespace pallomir::oracles
