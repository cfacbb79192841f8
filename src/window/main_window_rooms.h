#pragma once

#include <functional>
#include <string>
#include <vector>

#include "hotspots/hotspot_room.h"
#include "map/map_view.h"
#include "platform/menu_model.h"
#include "timeline/map_marks.h"
#include "timeline/picker_panel.h"
#include "timeline/timeline_panel.h"
#include "tracking/data_feed.h"
#include "tracking/unit_register.h"
#include "ui/question_queue.h"
#include "window/focus_holder.h"
#include "window/window_frame.h"

namespace pallomir {

/// Whom the main window tells what the user does: rooms, and the little that only the program as a whole can
/// do. All of it outlives what is told.
struct MainWindowRooms {
  MenuModel& menus;
  WindowFrame& frame;
  FocusHolder& focus;
  QuestionQueue& questions;

  PickerPanel& pickers;
  TimelinePanel& timeline;
  MapMarks& marks;
  DataFeed& feed;
  UnitRegister& units;
  HotspotRoom& hotspots;

  std::function<bool(int modifiers, char key)> keyDown;  ///< true when the key is one of ours
  std::function<void()> menuButton;
  std::function<void()> closed;  ///< the shut-down begins
};

}  // namespace pallomir
