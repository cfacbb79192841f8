#include "oracles/literal_visits.h"

#include <algorithm>
#include <fstream>
#include <iterator>

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

std::string ContentOf(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

// Bytes are numbered from 1 on.
double BigEndian(const std::string& text, std::size_t record, int firstByte) {
  double value = 0;
  for (int i = 0; i < 4; ++i)
    value = value * 256 +
            static_cast<unsigned char>(text[record * 14 + static_cast<std::size_t>(firstByte - 1 + i)]);
  return value;
}

double Signed(double value) { return value > 2147483647 ? value - 4294967296 : value; }

std::uint32_t TimeOf(const std::string& text, std::size_t record) {
  const double value = BigEndian(text, record, 1);
  return static_cast<std::uint32_t>(value >= 2147483648 ? value - 2147483648 : value);
}

class Search {
 public:
  Search(const fs::path& folder, const LiteralQuestion& question) : folder_(folder), question_(question) {
    for (unit_ = 0; unit_ < question.units.size() && result.error == 0; ++unit_) SearchUnit();
    std::stable_sort(result.visits.begin(), result.visits.end(),
                     [](const auto& a, const auto& b) { return a.exit > b.exit; });
    if (result.visits.size() > question.limit) result.visits.resize(question.limit);
  }

  LiteralSearch result;

 private:
  void SearchUnit() {
    previous_ = 0x7FFFFFFF;
    isPast_ = false;
    std::vector<std::string> names = NamesIn(folder_ / question_.units[unit_]);
    std::reverse(names.begin(), names.end());
    for (const std::string& name : names) {
      if (result.error != 0 || isPast_) break;
      const std::string content = ContentOf(folder_ / question_.units[unit_] / name);
      if (content.size() > 10080 || content.size() % 14 != 0) result.error = 65387;
      if (result.error != 0) break;
      if (content.empty()) continue;
      if (IsFull(TimeOf(content, content.size() / 14 - 1))) break;
      SearchFile(content);
    }
    if (isOpen_) End();
  }

  bool IsFull(std::uint32_t newest) const {
    const auto listed =
        std::count_if(result.visits.begin(), result.visits.end(),
                      [&](const LiteralVisit& visit) { return visit.unit == unit_ || visit.exit >= newest; });
    return !isOpen_ && static_cast<std::size_t>(listed) >= question_.limit;
  }

  void SearchFile(const std::string& content) {
    for (std::size_t record = content.size() / 14; record-- > 0 && result.error == 0 && !isPast_;) {
      const std::uint32_t time = TimeOf(content, record);
      if (time > previous_) {
        result.error = 776143;
      } else if (time < question_.first) {
        isPast_ = true;
      } else if (time <= question_.last) {
        const double lat = Signed(BigEndian(content, record, 6)) / 600000;
        const double lng = Signed(BigEndian(content, record, 10)) / 600000;
        Examine(time, question_.isInside(lat, lng));
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
  const LiteralQuestion& question_;
  std::size_t unit_ = 0;
  std::uint32_t previous_ = 0;
  bool isPast_ = false;
  bool isOpen_ = false;
  LiteralVisit open_;
};

}  // namespace

LiteralSearch LiteralVisits(const fs::path& folder, const LiteralQuestion& question) {
  return Search(folder, question).result;
}

}  // namespace pallomir::oracles
