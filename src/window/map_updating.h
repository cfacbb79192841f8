#pragma once

#include <functional>

#include "base/trace.h"
#include "window/boxes_view.h"

namespace pallomir {

/// The box that tells that the map is being updated: there from the beginning of the work until nothing of it
/// is under way any more.
class MapUpdating {
 public:
  /// `isUnderWay` tells whether there is still something to wait for.
  MapUpdating(BoxesView& view, Trace& trace, std::function<bool()> isUnderWay);

  void Show();
  /// A part of the work has ended.
  void HideWhenDone();

 private:
  BoxesView& view_;
  Trace& trace_;
  std::function<bool()> isUnderWay_;
  bool shown_ = false;
};

}  // namespace pallomir
