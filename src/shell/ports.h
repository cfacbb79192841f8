#pragma once

#include "alerts/alert_view.h"
#include "base/trace.h"
#include "commands/menu_view.h"
#include "hotspots/hotspot_view.h"
#include "journal/journal_view.h"
#include "live/live_view.h"
#include "platform/beeper.h"
#include "platform/browser.h"
#include "platform/clock.h"
#include "platform/event_loop.h"
#include "platform/folders.h"
#include "platform/instance_signal.h"
#include "platform/main_window.h"
#include "platform/named_mutex.h"
#include "platform/notifier.h"
#include "platform/program_starter.h"
#include "platform/settings.h"
#include "platform/sound_player.h"
#include "platform/user_registry.h"
#include "platform/web_query.h"
#include "reports/point_table_view.h"
#include "reports/visits_view.h"
#include "shell/deployment.h"
#include "timeline/map_marks.h"
#include "timeline/picker_panel.h"
#include "timeline/timeline_panel.h"
#include "tracking/feed_view.h"
#include "tracking/server_connection.h"
#include "tracking/unit_view.h"
#include "ui/question_queue.h"
#include "window/boxes_view.h"
#include "window/frame_view.h"
#include "zones/zones_view.h"

namespace pallomir {

/// What the rooms show, each through a view of its own. The main window implements them; tests record them.
struct Views {
  FrameView& frame;
  BoxesView& boxes;
  HotspotView& hotspots;
  FeedView& feed;
  UnitView& units;
  MenuView& menu;
  PickerView& pickers;
  TimelineView& timeline;
  MarksView& marks;
  ZonesView& zones;
  AlertView& alerts;
  JournalView& journal;
  PointTableView& pointTables;
  VisitsView& visits;
  LiveView& live;
};

/// Those of the main window.
template <class Window>
Views ViewsOf(Window& window, ZonesView& zones, AlertView& alerts, JournalView& journal,
              PointTableView& pointTables, VisitsView& visits, LiveView& live) {
  return {.frame = window,
          .boxes = window.Boxes(),
          .hotspots = window.Hotspots(),
          .feed = window,
          .units = window.Units(),
          .menu = window,
          .pickers = window,
          .timeline = window.Timeline(),
          .marks = window.Marks(),
          .zones = zones,
          .alerts = alerts,
          .journal = journal,
          .pointTables = pointTables,
          .visits = visits,
          .live = live};
}

/// What the user sees and hears, and the programs beside ours.
struct DesktopPorts {
  MainWindow& window;
  Browser& browser;
  QuestionQueue& questions;
  Beeper& beeper;
  SoundPlayer& sound;
  Notifier& notifier;
  ProgramStarter& programs;
  WebQuery& web;
};

/// What outlasts the run.
struct StoragePorts {
  Settings& settings;
  UserRegistry& registry;
  Folders folders;
};

/// What makes this instance the only one.
struct InstancePorts {
  NamedMutex& mutex;
  InstanceSignal& signal;
};

/// Everything outside the core that the client works with. All of it outlives the client.
struct Ports {
  Views views;
  ServerEndpoints network;
  DesktopPorts desktop;
  StoragePorts storage;
  InstancePorts instance;
  EventLoop& loop;
  Clock& clock;
  Trace& trace;
  Deployment deployment;
};

}  // namespace pallomir
