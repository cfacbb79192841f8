#include "tracking/formMobileUnit_Edit.h"

#include <utility>

#include "tracking/unit_editor.h"

namespace pallomir {

formMobileUnit_Edit::formMobileUnit_Edit(QWidget* owner, const std::vector<MobileUnit>& units,
                                         QuestionQueue& questions)
    : ListGridWidget(owner, OpenUnitEditor(units), questions), units_(units) {
  setObjectName("formMobileUnit_Edit");
  setWindowTitle("Edit Mobile Unit List");
}

void formMobileUnit_Edit::ShowFlags(const std::vector<MobileUnit>& units) {
  ChangeGrid([&](ListGrid& grid) { TakeChangedFlags(grid, std::exchange(units_, units), units); });
}

void formMobileUnit_Edit::TakeResult() {
  if (apply) apply(UnitsOfEditor(Grid()));
}

}  // namespace pallomir
