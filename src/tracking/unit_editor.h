#pragma once

#include <vector>

#include "tracking/mobile_units.h"
#include "ui/list_grid.h"

namespace pallomir {

/// Columns of the unit editor.
inline constexpr std::size_t kUnitIdColumn = 0;
inline constexpr std::size_t kUnitDescriptionColumn = 1;

/// The list grid as the unit editor opens it, a row a unit. A description that begins with "Unit #" shows as
/// the placeholder: it is the one that an untouched row was given.
ListGrid OpenUnitEditor(const std::vector<MobileUnit>& units);

/// What Apply stores. An untouched description is "Unit #" and the row's number; one that was opened with
/// more than that behind "Unit #" and was not touched stays as it was.
std::vector<MobileUnit> UnitsOfEditor(const ListGrid& grid);

/// Takes over the flags that a key or the menu changed while the editor is open; `before` and `now` are the
/// same units. A unit is known by its ID again, whatever row it is in by now; of equal IDs by its turn.
void TakeChangedFlags(ListGrid& grid, const std::vector<MobileUnit>& before,
                      const std::vector<MobileUnit>& now);

}  // namespace pallomir
