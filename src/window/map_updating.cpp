#include "window/map_updating.h"

#include <utility>

namespace pallomir {

MapUpdating::MapUpdating(BoxesView& view, Trace& trace, std::function<bool()> isUnderWay)
    : view_(view), trace_(trace), isUnderWay_(std::move(isUnderWay)) {}

void MapUpdating::Show() {
  shown_ = true;
  view_.ShowMapUpdating();
}

void MapUpdating::HideWhenDone() {
  if (!shown_ || isUnderWay_()) return;
  shown_ = false;
  view_.HideMapUpdating();
  trace_.Line("hiding formMapUpdating");
}

}  // namespace pallomir
