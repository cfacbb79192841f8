#pragma once

#include <functional>
#include <string>

#include "zones/zone_tree.h"

namespace pallomir {

/// "Every day", "Mon-Fri", "Sun, Wed"; the stored form has a letter or "-" for each day, Sunday first.
std::string DaysText(const ZoneOptions& options);

/// Three digits that count, and the unit: "0.0123 sq mi", "1,230 km²".
std::string AreaText(double squareMiles, bool inKilometers);

/// The list of zones as a window shows it: a line for each zone, whose texts are made when they are asked
/// for.
class ZoneListModel {
 public:
  enum Column { kZone, kKind, kDays, kVertices, kArea, kColumns };

  /// The tree outlives this object. Whoever changes it tells the window.
  explicit ZoneListModel(const ZoneTree& tree) : tree_(tree) {}

  /// Both have a meaning that may change while the list shows.
  std::function<bool()> inKilometers = [] { return false; };
  std::function<bool()> mayChange = [] { return true; };

  const ZoneTree& Tree() const { return tree_; }
  static const char* Heading(Column column);
  std::string Text(ZoneOrdinal zone, Column column) const;

 private:
  const ZoneTree& tree_;
};

}  // namespace pallomir
