#include "hotspots/hotspot_room.h"

#include <gmock/gmock.h>

#include "fakes/fake_view.h"
#include "fakes/room_ports.h"

namespace pallomir {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class HotspotRoomTest : public testing::Test, protected fakes::RoomPorts {
 protected:
  HotspotRoomTest() {
    room_.changed = [this] { ++changes_; };
  }

  fakes::FakeView view_;
  HotspotRoom room_{view_, choices_.hotspots};
  int changes_ = 0;
};

TEST_F(HotspotRoomTest, ADamagedListStaysAsItIsUntilItIsEdited) {
  settings_.values["SSIDs"] = "04home??";
  settings_.values["SecureSSIDs"] = "04home08WPA2~abc04";
  room_.ReadLists();
  EXPECT_THAT(room_.Hotspots(), ElementsAre("home"));
  EXPECT_EQ(changes_, 1);
  room_.Apply({"home"});
  room_.ApplySecure({{"home", "WPA2", "abc"}});
  EXPECT_THAT(settings_.saved, IsEmpty());
  EXPECT_EQ(changes_, 1);
  room_.Apply({"home", "car"});
  room_.ApplySecure({});
  EXPECT_EQ(settings_.saved["SSIDs"], "04home03car");
  EXPECT_EQ(settings_.saved["SecureSSIDs"], "");
  EXPECT_THAT(room_.SecureHotspots(), IsEmpty());
  EXPECT_EQ(changes_, 3);
}

TEST_F(HotspotRoomTest, TheModeIsSwitchedThereAndBack) {
  const std::tuple<const char*, bool, const char*> cases[] = {{"Permitted", false, "Permitted"},
                                                              {"Prohibited", false, "Prohibited"},
                                                              {"Permitted", true, "Prohibited"},
                                                              {"Prohibited", true, "Permitted"},
                                                              {"Nonsense", false, "Permitted"}};
  for (const auto& [stored, toggle, now] : cases) {
    settings_.values["SSID_List_Mode"] = stored;
    choices_.hotspots.mode.Read();
    room_.HotSpotsChange(toggle);
    EXPECT_EQ(settings_.saved["SSID_List_Mode"], now) << stored;
    EXPECT_EQ(room_.IsProhibited(), std::string(now) == "Prohibited");
  }
}

}  // namespace
}  // namespace pallomir
