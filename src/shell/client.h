#pragma once

#include <cstddef>
#include <vector>

#include "commands/command.h"
#include "commands/command_handlers.h"
#include "commands/map_commands.h"
#include "map/map_bridge.h"
#include "map/map_view.h"
#include "platform/event_loop.h"
#include "platform/local_clock.h"
#include "platform/menu_model.h"
#include "reports/clicked_address.h"
#include "settings/stored_choices.h"
#include "shell/alert_joints.h"
#include "shell/instance_hold.h"
#include "shell/joint.h"
#include "shell/journal_joints.h"
#include "shell/live_joints.h"
#include "shell/option_joints.h"
#include "shell/point_table_joints.h"
#include "shell/ports.h"
#include "shell/visit_joints.h"
#include "shell/zone_joints.h"
#include "timeline/displayed_points.h"
#include "timeline/map_marks.h"
#include "timeline/picker_panel.h"
#include "timeline/timeline_panel.h"
#include "tracking/data_feed.h"
#include "tracking/unit_register.h"
#include "ui/question_queue.h"
#include "window/focus_holder.h"
#include "window/main_window_rooms.h"
#include "window/map_updating.h"
#include "window/window_frame.h"

namespace pallomir {

/// The conductor: makes the rooms of the program, joins what one of them reports to what another does, and
/// runs start-up and shut-down in their order. What can be in a room's hands is not in its own.
class Client {
 public:
  explicit Client(const Ports& ports);
  ~Client();

  // Life (client.cpp, client_start.cpp)
  void Load();    ///< the start-up sequence; the window appears when it gets that far
  void Unload();  ///< the shut-down sequence; the window is closing
  bool IsClosing() const { return closing_; }

  // What the user does with the window (client_window.cpp, client_commands.cpp)
  /// Whom the main window tells what the user does.
  MainWindowRooms RoomsOfWindow();
  WindowFrame& Frame() { return frame_; }
  /// True when the key was one of ours.
  bool KeyDown(int modifiers, char key);
  void MenuButtonClicked();
  void MenuChosen(const MenuItem& item);
  /// Clears the data of every unit and asks for it again.
  void MapReload();
  /// The user's fit: takes in what has arrived meanwhile, then shows all units (0) or the enabled unit k.
  void FitByUser(std::size_t k);

  // Read-only state, for the view's rendering and for tests
  MenuModel& Menus() { return menus_; }
  const CommandHandlers& Handlers() const { return handlers_; }
  UnitRegister& Units() { return units_; }
  DataFeed& Feed() { return feed_; }
  const PointStore& Points() const { return feed_.Points(); }
  const MapView& View() const { return view_; }
  const PageState& Page() const { return map_.Page(); }
  const TrackTiles& Tiles() const { return map_.Tiles(); }
  PickerPanel& Pickers() { return pickers_; }
  TimelinePanel& Timeline() { return timeline_; }
  MapMarks& Marks() { return marks_; }
  const TimeWindow& Window() const { return pickers_.Window(); }
  bool IsDemoMode() const { return choices_.demoMode.Value(); }
  Millis NowLocal() const { return localClock_.Now(); }

 private:
  // Start-up in its order (client_start.cpp)
  void ContinueLoad();
  void CheckUnits();
  void ShowWindow();

  // Data (client_data.cpp)
  DataFeed::Host FeedHost();
  void OnBatch(const MergedBatch& batch);
  void OnUpdateAction();

  // Commands of menus and keys (client_commands.cpp)
  void HandleCommands();
  void HandleViewCommands();

  // Units (client_window.cpp)
  void EnumerateMUs();

  // Map (client_map.cpp)
  MapBridge::Host MapHost();
  WorldBox BeginFit(std::size_t k);

  // Layout (client_window.cpp)
  void OnLaidOut();

  PickerPanel::Host PickerHost();
  TimelinePanel::Host TimelineHost();
  MapMarks::Host MarksHost();
  JoinedRooms Rooms();

  Ports ports_;
  bool closing_ = false;
  bool loaded_ = false;  // the start-up sequence is through

  StoredChoices choices_;
  MenuModel menus_;
  CommandHandlers handlers_;
  UnitRegister units_;
  LocalClock localClock_;
  InstanceHold hold_;

  DataFeed feed_;

  MapView view_;
  MapBridge map_;
  ClickedAddress clickedAddress_;
  MapCommands mapCommands_;

  DisplayedPoints points_;
  PickerPanel pickers_;
  TimelinePanel timeline_;
  MapMarks marks_;

  WindowFrame frame_;
  FocusHolder focus_;
  MapUpdating mapUpdating_;

  // What works with all of these.
  OptionJoints options_;
  ZoneJoints zones_;
  JournalJoints journal_;
  PointTableJoints pointTables_;
  AlertJoints alerts_;
  VisitJoints visits_;
  LiveJoints live_;
  const std::vector<Joint*> joints_{&options_, &zones_, &journal_, &pointTables_, &alerts_, &visits_, &live_};
};

}  // namespace pallomir
