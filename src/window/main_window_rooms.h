#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/civil_time.h"
#include "hotspots/hotspot_room.h"
#include "map/map_view.h"
#include "platform/menu_model.h"
#include "tracking/data_feed.h"
#include "tracking/unit_register.h"
#include "ui/question_queue.h"
#include "window/focus_holder.h"
#include "window/window_frame.h"

namespace pallomir {

/// What the user does with the timeline and the pickers.
struct TimelineInput {
  std::function<void(int row, int column)> hovered;
  std::function<void()> left;
  std::function<void(double from, double to)> dragged;  ///< shares of the window
  std::function<void()> layoutClicked;                  ///< `imgReload`
  std::function<void(int i)> pickerGotFocus;
  std::function<void(int i)> pickerLostFocus;
  std::function<void(int i, Millis value)> pickerChanged;
  std::function<void(int i)> pickerDroppedDown;
  std::function<void(int i)> pickerClosedUp;
  std::function<void()> reload;  ///< `cmdOK_Reload`
};

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

  TimelineInput timeline;
  PointerInput pointer;
  DataFeed& feed;
  UnitRegister& units;
  HotspotRoom& hotspots;

  std::function<bool(int modifiers, char key)> keyDown;  ///< true when the key is one of ours
  std::function<void()> menuButton;
  std::function<void()> closed;  ///< the shut-down begins
};

}  // namespace pallomir
