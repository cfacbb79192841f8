#pragma once

#include <vector>

#include "tracking/mobile_units.h"

namespace pallomir {

/// The editor of the mobile units, modeless.
class UnitView {
 public:
  virtual ~UnitView() = default;

  /// Opens the editor; one that is open comes forward and keeps what was entered.
  virtual void EditUnits(const std::vector<MobileUnit>& units) = 0;
  /// Units were switched on or off elsewhere: an open editor takes their flags over.
  virtual void ShowUnitFlags(const std::vector<MobileUnit>& units) = 0;
};

}  // namespace pallomir
