#pragma once

#include "ui/list_grid_widget.h"

namespace pallomir {

/// The editor of the hotspot list: a modeless window that its owner keeps on top of itself.
class formHotSpots_Edit : public ListGridWidget {
 public:
  formHotSpots_Edit(QWidget* owner, const std::vector<std::string>& ssids, QuestionQueue& questions);

  /// Apply was pressed; the window closes afterwards.
  std::function<void(const std::vector<std::string>&)> apply;

 protected:
  void TakeResult() override;
};

}  // namespace pallomir
