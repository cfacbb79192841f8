#pragma once

#include "commands/command_handlers.h"
#include "map/map_bridge.h"
#include "platform/local_clock.h"
#include "platform/menu_model.h"
#include "reports/clicked_address.h"
#include "settings/stored_choices.h"
#include "shell/instance_hold.h"
#include "shell/ports.h"
#include "timeline/displayed_points.h"
#include "timeline/map_marks.h"
#include "timeline/picker_panel.h"
#include "timeline/timeline_panel.h"
#include "tracking/data_feed.h"
#include "tracking/unit_register.h"
#include "window/window_frame.h"

namespace pallomir {

/// What a joint works with. All of it outlives the joint.
struct JoinedRooms {
  const Ports& ports;
  InstanceHold& hold;
  StoredChoices& choices;
  const LocalClock& localClock;
  MenuModel& menus;
  CommandHandlers& handlers;
  UnitRegister& units;
  DataFeed& feed;
  MapBridge& map;
  ClickedAddress& clickedAddress;
  const DisplayedPoints& points;
  PickerPanel& pickers;
  TimelinePanel& timeline;
  MapMarks& marks;
  WindowFrame& frame;
};

/// Where a capability is joined with the rest of the program: it owns the capability's rooms, and its
/// constructor sets the handlers of their commands. The conductor tells every joint, in the order in which it
/// names them, what happens to the program as a whole; each overrides what concerns it. All calls come from
/// the event loop.
class Joint {
 public:
  virtual ~Joint() = default;
  /// Once: the main window stands, the page has been asked for, the choices have been read.
  virtual void Open() {}
  /// Once: the program ends. Without an Open where the start-up did not get that far.
  virtual void Close() {}
  virtual void OnPageReady() {}
  virtual void OnPageLost() {}
  /// All points are about to be dropped and asked for again.
  virtual void OnReload() {}
  /// The window has another size, or is laid out anew.
  virtual void OnLaidOut() {}
  /// `batch` is valid during the call. The map follows behind it.
  virtual void OnBatch(const MergedBatch& /*batch*/) {}
};

}  // namespace pallomir
