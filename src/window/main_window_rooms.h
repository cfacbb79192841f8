#pragma once

#include <functional>
#include <string>
#include <vector>

#include "hotspots/hotspot_room.h"
#include "map/map_view.h"
#include "platform/menu_model.h"
#include "timeline/picker_panel.h"
#include "timeline/timeline_panel.h"
#include "tracking/data_feed.h"
#include "tracking/unit_register.h"
#include "ui/question_queue.h"
#include "window/focus_holder.h"
#include "window/window_frame.h"

namespace pallomir {

/// What the user does with the pointer over the map and the caption line.
struct PointerInput {
  std::function<void(int x)> overCaption;  ///< x in the window
  /// The pointer left the map and the caption line, or the window is no longer active.
  std::function<void()> left;
  /// A box was drawn on the map with Shift held. Corners in view pixels.
  std::function<void(ViewPoint, ViewPoint)> boxDrawn;
};

/// Whom the main window tells what the user does: rooms, and the little that only the program as a whole can
/// do. All of it outlives what is told.
struct MainWindowRooms {
  MenuModel& menus;
  WindowFrame& frame;
  FocusHolder& focus;
  QuestionQueue& questions;

  PickerPanel& pickers;
  TimelinePanel& timeline;
  PointerInput pointer;
  DataFeed& feed;
  UnitRegister& units;
  HotspotRoom& hotspots;

  std::function<bool(int modifiers, char key)> keyDown;  ///< true when the key is one of ours
  std::function<void()> menuButton;
  std::function<void()> closed;  ///< the shut-down begins
};

}  // namespace pallomir
