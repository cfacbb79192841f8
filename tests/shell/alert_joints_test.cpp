#include "commands/command_table.h"
#include "shell/client_testing.h"

// What follows a batch is heard, and what the user chooses of it is kept.

namespace pallomir {
namespace {

class AlertJointsTest : public ClientTest {
 protected:
  void Start(const std::map<std::string, std::string>& stored = {}) {
    for (const auto& [key, value] : stored) settings.values[key] = value;
    StartStreaming();
  }
  void Restart() {
    ClientHarness::Restart();
    client->Load();
  }
  void ArrivePoint(int seconds, double lat = 40.6, double lng = -75.3) {
    Arrive(PacketOf({Record(seconds, lat, lng)}));
  }
  void Answer(const std::string& text) { box.AnswerIt({true, text}); }
};

TEST_F(AlertJointsTest, EachBatchIsOnePlayAndHeldOnesNone) {
  Start();
  ArrivePoint(0);
  EXPECT_THAT(sound.plays, SizeIs(1));
  EXPECT_EQ(sound.open, folders.Path() / "app/Alerts/Ding.wav");
  EXPECT_GT(window.raised, 0);
  ArrivePoint(1);
  EXPECT_THAT(sound.plays, SizeIs(1)) << "held";
  client->KeyDown(kNoModifier, 'F');
  EXPECT_THAT(sound.plays, SizeIs(2));
  client->KeyDown(kNoModifier, 'F');
  EXPECT_THAT(sound.plays, SizeIs(2)) << "nothing new";
}

TEST_F(AlertJointsTest, APersistentOneShowsItsWindowAndGoesOnThroughBatchesAndSizes) {
  Start({{"AlertEnabled", "2"}});
  ArrivePoint(0);
  EXPECT_EQ(alertView.shown, 1);
  client->KeyDown(kNoModifier, 'F');
  ArrivePoint(1);
  client->KeyDown(kNoModifier, 'F');
  EXPECT_EQ(alertView.raised, 1) << "the main window came before it";
  EXPECT_EQ(alertView.shown, 1);
  sound.lasts = 5000;
  loop.Advance(1500);
  client->Frame().Resized();
  EXPECT_FALSE(sound.sounds);
  const std::size_t count = sound.plays.size();
  loop.Advance(1000);
  EXPECT_THAT(sound.plays, SizeIs(count + 1));
  Choose("mnuOptionsAlertTest");
  EXPECT_EQ(alertView.raised, 2);
  client->Unload();
  EXPECT_FALSE(alertView.IsOpen() || sound.sounds);
}

TEST_F(AlertJointsTest, ChoicesAreShownStoredAndThereAgain) {
  Start();
  Choose("mnuOptionsAlertEnabledArray", 2);
  Choose("mnuOptionsAlertSoundArray", 7);
  Choose("mnuAlertsStaleArray", 5);
  Choose("mnuAlertsNOW");
  Choose("mnuAlertsZonesOnly");
  for (int run = 0; run < 2; ++run) {
    EXPECT_EQ(Entry("mnuOptionsAlert").caption, "Alert Persistent \"SoftTick\"");
    EXPECT_EQ(Entry("mnuAlertsStale").caption, "Data is Stale After: Never Goes Stale");
    EXPECT_TRUE(Entry("mnuAlertsNOW").checked && Entry("mnuAlertsZonesOnly").checked);
    Restart();
  }
}

TEST_F(AlertJointsTest, WhereAlertsGoIsShownInTheMenuAlsoAfterARestart) {
  Start();
  const auto caption = [this] { return Entry("mnuAlertsSendTo").caption; };
  EXPECT_EQ(caption(), "Alerts to: (unconfigured)");
  EXPECT_EQ(Entry("mnuAlertsTextMeProviderArray", 3).caption, "&3 AT&&T (txt.att.net)");
  EXPECT_EQ(Entry("mnuAlertsTextMeProviderArray", 21).tag, "US Cellular~email.uscc.net");
  EXPECT_EQ(client->Menus().CheckedIndex(Command::kCarrier), 1);
  EXPECT_FALSE(Entry("mnuAlertsTextMeProviderArray", 99).visible);
  Choose("mnuAlertsEmailMe");
  Answer("me@example.com");
  EXPECT_EQ(caption(), "&Email Me At: me@example.com");
  Restart();
  EXPECT_EQ(caption(), "&Email Me At: me@example.com");
  Choose("mnuAlertsTextMePhone");
  Answer("6105550123");
  Choose("mnuAlertsTextMeProviderArray", 98);
  Answer("R&D");
  Answer("sms.example.com");
  Restart();
  const MenuItem& own = Entry("mnuAlertsTextMeProviderArray", 99);
  EXPECT_TRUE(own.visible && own.checked);
  EXPECT_EQ(own.caption, "&Y     R&&D (sms.example.com)");
  EXPECT_EQ(own.tag, "R&D~sms.example.com");
  EXPECT_EQ(caption(), "&Text Me At: 6105550123@sms.example.com");
}

TEST_F(AlertJointsTest, MutedIsSeenAndNothingIsHeard) {
  Start({{"AlertEnabled", "2"}});
  ArrivePoint(0);
  Choose("mnuAlertsMuteArray", 1);
  EXPECT_FALSE(sound.sounds || alertView.IsOpen());
  EXPECT_TRUE(alertView.muted);
  EXPECT_EQ(alertView.muteText, "Muted until 04:30:00 p");
  EXPECT_EQ(Entry("mnuAlertsMute").caption, "&Muted until 04:30:00 p");
  Restart();
  EXPECT_TRUE(alertView.muted);
  Connect();
  const std::size_t count = sound.plays.size();
  ArrivePoint(0);
  EXPECT_THAT(sound.plays, SizeIs(count));
  Choose("mnuAlertsMuteArray", 0);
  EXPECT_FALSE(alertView.muted);
  Choose("mnuOptionsAlertTest");
  EXPECT_TRUE(alertView.IsOpen());
}

TEST_F(AlertJointsTest, TheUnitMenuTellsWhoIsStale) {
  Start();
  ArrivePoint(0);  // 8 and a half hours before now
  const auto captions = [this] {
    MenuItem& menu = client->Menus().At(Command::kUnits);
    menu.fill(menu);
    return std::vector{Entry("mnuOptionsMUArray", 1).caption, Entry("mnuOptionsMUArray", 2).caption};
  };
  EXPECT_THAT(captions(), ElementsAre("0123456789AB - First (stale)", "0123456789AC - Second"));
  Choose("mnuAlertsStaleArray", 5);
  EXPECT_EQ(captions()[0], "0123456789AB - First");
  Choose("mnuAlertsStaleArray", 3);
  client->KeyDown(kNoModifier, 'F');
  ArrivePoint(30 * 60);
  client->KeyDown(kNoModifier, 'F');
  EXPECT_EQ(captions()[0], "0123456789AB - First") << "exactly eight hours are not stale yet";
  MenuItem& now = client->Menus().At(Command::kNowAlertsUnits);
  now.fill(now);
  now.fill(now);
  EXPECT_EQ(client->Menus().Count(Command::kNowUnit), 3);
  EXPECT_FALSE(Entry("mnuAlertsNOW_Array", 2).enabled || Entry("mnuAlertsNOW_Array", 0).visible);
}

}  // namespace
}  // namespace pallomir
