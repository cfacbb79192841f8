#pragma once

#include "hotspots/hotspot_lists.h"
#include "ui/list_grid_widget.h"

namespace pallomir {

/// The editor of the secure hotspot list: a modeless window that its owner keeps on top of itself. Keys are
/// shown as they are stored, in plain text.
class formSecureHotSpots_Edit : public ListGridWidget {
 public:
  formSecureHotSpots_Edit(QWidget* owner, const std::vector<SecureHotspot>& hotspots,
                          QuestionQueue& questions);

  /// Apply was pressed; the window closes afterwards.
  std::function<void(const std::vector<SecureHotspot>&)> apply;

 protected:
  void TakeResult() override;
};

}  // namespace pallomir
