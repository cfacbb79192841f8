#include "shell/option_joints.h"

#include "commands/hotspot_menus.h"
#include "commands/service_commands.h"

namespace pallomir {

OptionJoints::OptionJoints(const JoinedRooms& rooms)
    : choices_(rooms.choices),
      menus_(rooms.menus),
      choiceCommands_(menus_, rooms.handlers, choices_, rooms.ports.desktop.questions),
      hotspots_(rooms.ports.views.hotspots, choices_.hotspots),
      service_(rooms.ports.desktop.programs, rooms.ports.loop, rooms.ports.desktop.questions,
               rooms.ports.trace, rooms.ports.storage.folders.application),
      demoSwitch_(choices_.demoMode, rooms.hold, rooms.ports.storage.settings, rooms.ports.desktop.questions,
                  rooms.ports.desktop.programs, rooms.ports.storage.folders) {
  HandleHotspotCommands(rooms.handlers, hotspots_);
  HandleServiceCommands(rooms.handlers, service_);
  rooms.handlers.Set(Command::kDemoMode, [this](int) { demoSwitch_.Ask(); });
  hotspots_.changed = [this] { ShowHotspots(menus_, hotspots_); };
  JoinService(rooms.feed);
  JoinDemo(rooms);
}

void OptionJoints::JoinService(DataFeed& feed) {
  service_.busyChanged = [this, &feed] {
    ShowServiceBusy(menus_, service_.IsBusy());
    if (!isClosed_) feed.ShowLamp();
  };
}

void OptionJoints::JoinDemo(const JoinedRooms& rooms) {
  demoSwitch_.leaving = [&frame = rooms.frame] { frame.Store(); };
  demoSwitch_.changed = [this] { ShowDemoMode(); };
  demoSwitch_.started = [&window = rooms.ports.desktop.window] { window.Close(); };
}

void OptionJoints::Read() {
  choiceCommands_.ReadFirst();
  choices_.Read();
  hotspots_.HotSpotsChange(false);
  choiceCommands_.ShowOthers();
  ShowDemoMode();
}

void OptionJoints::ShowDemoMode() { menus_.At(Command::kDemoMode).checked = choices_.demoMode.Value(); }

void OptionJoints::Close() {
  isClosed_ = true;
  service_.Close();
  hotspots_.Close();
  demoSwitch_.Close();
}

}  // namespace pallomir
