#pragma once

#include "tracking/mobile_units.h"
#include "ui/list_grid_widget.h"

namespace pallomir {

/// The unit editor: a modeless window that its owner keeps on top of itself.
class formMobileUnit_Edit : public ListGridWidget {
 public:
  formMobileUnit_Edit(QWidget* owner, const std::vector<MobileUnit>& units, QuestionQueue& questions);

  /// Apply was pressed; the window closes afterwards.
  std::function<void(const std::vector<MobileUnit>&)> apply;

  /// A key or the menu changed flags of the units: those change here too.
  void ShowFlags(const std::vector<MobileUnit>& units);

 protected:
  void TakeResult() override;

 private:
  std::vector<MobileUnit> units_;  // as they stand outside
};

}  // namespace pallomir
