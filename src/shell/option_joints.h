#pragma once

#include <string>

#include "commands/choice_commands.h"
#include "dataserver/service_control.h"
#include "hotspots/hotspot_room.h"
#include "shell/demo_switch.h"
#include "shell/joint.h"

namespace pallomir {

/// What the Options menu opens: the stored choices, the Wi-Fi lists, the user's own Data Server, the demo.
class OptionJoints final : public Joint {
 public:
  explicit OptionJoints(const JoinedRooms& rooms);

  /// Reads the stored choices and shows them. The Wi-Fi lists follow in `ReadLists`, since what is read first
  /// stands first in the settings file.
  void Read();
  void ReadLists() { hotspots_.ReadLists(); }
  void Close() override;

  HotspotRoom& Hotspots() { return hotspots_; }
  /// What the service has to say, for the lamp's tool tip; may be empty.
  const std::string& ServiceNote() const { return service_.Note(); }

 private:
  void JoinService(DataFeed& feed);
  void JoinDemo(const JoinedRooms& rooms);
  void ShowDemoMode();

  StoredChoices& choices_;
  MenuModel& menus_;
  ChoiceCommands choiceCommands_;
  HotspotRoom hotspots_;
  ServiceControl service_;
  DemoSwitch demoSwitch_;
  bool isClosed_ = false;
};

}  // namespace pallomir
