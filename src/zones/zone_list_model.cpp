#include "zones/zone_list_model.h"

#include <algorithm>
#include <cmath>

#include "base/data_point.h"
#include "base/number_format.h"
#include "zones/zone_area.h"
#include "zones/zone_options_model.h"

namespace pallomir {
namespace {

constexpr const char* kDayNames[ZoneOptionsModel::kDays] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};

// Far down, the dotted number is too long to be read: its last part stands for it.
std::string ShortSection(const ZoneTree& tree, ZoneOrdinal zone) {
  constexpr int kDeepest = 50;
  if (tree.At(zone).depth <= kDeepest) return tree.Section(zone);
  return "…" + std::to_string(tree.At(zone).number);
}

std::string WithThousands(std::string digits) {
  for (std::size_t at = digits.size(); at > 3; at -= 3) digits.insert(at - 3, ",");
  return digits;
}

}  // namespace

std::string DaysText(const ZoneOptions& options) {
  const ZoneOptionsModel model(options);
  std::string text;
  std::size_t count = 0;
  for (std::size_t day = 0; day < ZoneOptionsModel::kDays; ++day) {
    if (!model.IsDayIncluded(day)) continue;
    std::size_t last = day;
    while (last + 1 < ZoneOptionsModel::kDays && model.IsDayIncluded(last + 1)) ++last;
    count += last - day + 1;
    text += (text.empty() ? "" : ", ") + std::string(kDayNames[day]);
    if (last > day) text += (last > day + 1 ? "-" : ", ") + std::string(kDayNames[last]);
    day = last;
  }
  if (count == ZoneOptionsModel::kDays) return "Every day";
  return count == 0 ? "No day" : text;
}

std::string AreaText(double squareMiles, bool inKilometers) {
  constexpr double kSmallest = 1e-7;
  const double area = inKilometers ? squareMiles * kKilometersPerMile * kKilometersPerMile : squareMiles;
  const char* unit = inKilometers ? " km²" : " sq mi";
  if (area < kSmallest) return std::string("0") + unit;
  const int decimals = 2 - static_cast<int>(std::floor(std::log10(area)));
  if (decimals > 0) return FormatFixed(area, 1, decimals) + unit;
  const double step = std::pow(10, -decimals);
  return WithThousands(FormatFixed(std::round(area / step) * step, 1, 0)) + unit;
}

const char* ZoneListModel::Heading(Column column) {
  constexpr const char* kHeadings[kColumns] = {"Zone", "Kind", "Days", "Corners", "Area"};
  return kHeadings[column];
}

std::string ZoneListModel::Text(ZoneOrdinal zone, Column column) const {
  const ZoneTree::Node& node = tree_.At(zone);
  switch (column) {
    case kZone:
      return ShortSection(tree_, zone) + " " + node.options.Description;
    case kKind:
      return NameOf(tree_.KindOf(zone));
    case kDays:
      return DaysText(node.options);
    case kVertices:
      return std::to_string(node.vertexCount);
    case kArea:
      return AreaText(AreaInSquareMiles(tree_.VerticesOf(zone)), inKilometers());
    case kColumns:
      break;
  }
  return {};
}

}  // namespace pallomir
