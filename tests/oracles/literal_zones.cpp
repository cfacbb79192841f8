#include "oracles/literal_zones.h"

#include <cmath>
#include <cstdlib>

namespace pallomir::oracles {
namespace {

// Splits at commas and line ends, without quotes; CR and empty lines are left out.
std::vector<std::string> FieldsOf(std::string_view file) {
  std::vector<std::string> fields;
  std::string field;
  bool isQuoted = false, hasField = false;
  const auto end = [&] {
    if (hasField) fields.push_back(field);
    field.clear();
    hasField = false;
  };
  for (const char c : file) {
    if (c == '"') {
      isQuoted = !isQuoted;
      hasField = true;
    } else if (!isQuoted && (c == ',' || c == '\n')) {
      end();
    } else if (isQuoted || c != '\r') {
      field += c;
      hasField = true;
    }
  }
  end();
  return fields;
}

class Reader {
 public:
  explicit Reader(std::string_view file) : fields_(FieldsOf(file)) {
    tree.isAlerted = fields_.at(next_++) == "Alerted";
    if (!AtEnd()) ReadHeader();
    if (hasZone_) ReadLevel(tree.root, 1, "");
    if (hasZone_ && !tree.illegalDepth) tree.illegalDepth = depth_;  // above every level
  }

  LiteralTree tree;

 private:
  bool AtEnd() const { return next_ == fields_.size(); }

  void ReadHeader() {
    ++next_;
    depth_ = std::atoi(fields_.at(next_++).c_str());
    zone_ = std::make_unique<LiteralZone>();
    for (int i = 0; i < 5; ++i) zone_->texts.push_back(fields_.at(next_++));
    hasZone_ = true;
    for (bool more = !AtEnd(); more;) {
      more = std::atoi(fields_.at(next_++).c_str()) != 0;
      const double lat = std::strtod(fields_.at(next_++).c_str(), nullptr);
      zone_->vertices.emplace_back(lat, std::strtod(fields_.at(next_++).c_str(), nullptr));
    }
  }

  void ReadLevel(LiteralZone& node, int depth, const std::string& prefix) {
    int child = 0;
    while (hasZone_ && !tree.illegalDepth) {
      if (depth_ == depth) {
        zone_->section = prefix + (prefix.empty() ? "" : ".") + std::to_string(++child);
        zone_->ordinal = ordinal_++;
        node.children.push_back(std::move(zone_));
        hasZone_ = false;
        if (AtEnd()) return;
        ReadHeader();
      } else if (depth_ == depth + 1 && !node.children.empty()) {
        ReadLevel(*node.children.back(), depth + 1, node.children.back()->section);
      } else if (depth_ >= 1 && depth_ < depth) {
        return;
      } else {
        tree.illegalDepth = depth_;
      }
    }
  }

  std::vector<std::string> fields_;
  std::size_t next_ = 0;
  int depth_ = 0;
  int ordinal_ = 0;
  bool hasZone_ = false;
  std::unique_ptr<LiteralZone> zone_;
};

constexpr double kPi = 3.14159265358979, kTwoPi = 6.28318530717958;

std::pair<double, double> Project(double lat, double lng) {
  const double phi = lat * kPi / 180;
  return {lng / 360 + 0.5, 0.5 - std::log(std::tan(phi) + 1 / std::cos(phi)) / kTwoPi};
}

bool Contains(const LiteralZone& zone, double px, double py) {
  bool inside = false;
  for (std::size_t i = 0; i < zone.vertices.size(); ++i) {
    const auto& before = zone.vertices[(i + zone.vertices.size() - 1) % zone.vertices.size()];
    const auto [x1, y1] = Project(before.first, before.second);
    const auto [x2, y2] = Project(zone.vertices[i].first, zone.vertices[i].second);
    bool crossed = false;
    if (y1 == y2) {
      crossed = false;
    } else if (py == y1) {
      crossed = y2 > y1 && x1 <= px;
    } else if (py == y2) {
      crossed = y2 < y1 && x2 <= px;
    } else if (y2 > y1 && y1 < py && py < y2) {
      crossed = (x2 - x1) / (y2 - y1) <= (px - x1) / (py - y1);
    } else if (y2 < y1 && y2 < py && py < y1) {
      crossed = (x2 - x1) / (y2 - y1) >= (px - x1) / (py - y1);
    }
    if (crossed) inside = !inside;
  }
  return inside;
}

bool Visit(const LiteralZone& zone, bool isRoot, double px, double py, LiteralAnswer& answer) {
  if (!isRoot) {
    if (!Contains(zone, px, py)) return false;
    answer.path += zone.texts[1] + "\r\n";
    answer.deepest = zone.ordinal;
    answer.isAlert = !answer.isAlert;
  }
  for (const auto& child : zone.children) {
    if (Visit(*child, false, px, py, answer)) break;
  }
  return true;
}

}  // namespace

LiteralTree LiteralReadZones(std::string_view file) { return std::move(Reader(file).tree); }

LiteralAnswer LiteralQuery(const LiteralTree& tree, double lat, double lng) {
  LiteralAnswer answer;
  answer.isAlert = !tree.isAlerted;
  const auto [px, py] = Project(lat, lng);
  Visit(tree.root, true, px, py, answer);
  return answer;
}

}  // namespace pallomir::oracles
