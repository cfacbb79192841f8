#include "alerts/alert_delivery.h"

#include <gmock/gmock.h>

#include "alerts/carriers.h"
#include "fakes/room_ports.h"

namespace pallomir {
namespace {

TEST(AlertDelivery, AddressesAndNumbersAreLookedAtByTheirRules) {
  const std::tuple<const char*, bool, bool> cases[] = {
      {"a@b.c", true, false},       {"a@b.", true, false},        {"a@b@c.d", true, false},
      {"@b.c", false, false},       {"a@.c", false, false},       {"a.b@c", false, false},
      {"a@bc", false, false},       {"ab.c", false, false},       {"", false, false},
      {"1235551212", false, true},  {"123555121", false, false},  {"12355512121", false, false},
      {"123555121x", false, false}, {"-123555121", false, false}, {"1.23555121", false, false},
      {"123555 121", false, false}};
  for (const auto& [text, isEmail, isPhone] : cases) {
    EXPECT_EQ(IsEmailAddress(text), isEmail) << text;
    EXPECT_EQ(IsPhoneNumber(text), isPhone) << text;
  }
}

class AlertDeliveryTest : public testing::Test, protected fakes::RoomPorts {
 protected:
  AlertDeliveryTest() {
    delivery_.changed = [this] { ++changes_; };
  }

  void Restart() { choices_.Read(); }
  void Answer(const std::string& text) { box_.AnswerIt({!text.empty(), text}); }
  const Question& Asked() const { return box_.shown.back(); }

  AlertDelivery delivery_{choices_.alerts, choices_.provider, questions_};
  int changes_ = 0;
};

TEST_F(AlertDeliveryTest, TheEmailAddressIsAskedUntilItIsOneOrGivenUp) {
  EXPECT_EQ(delivery_.Caption(), "Alerts to: (unconfigured)");
  delivery_.AskEmail();
  EXPECT_EQ(Asked().text, "Enter your email address below:");
  Answer("nobody");
  ASSERT_TRUE(box_.IsOpen()) << "asked again";
  Answer("");
  EXPECT_TRUE(settings_.saved.empty());
  delivery_.AskEmail();
  Answer("R&D@example.com");
  EXPECT_EQ(delivery_.Caption(), "&Email Me At: R&&D@example.com");
  EXPECT_EQ(settings_.saved["Email Address"], "R&D@example.com");
  EXPECT_EQ(settings_.saved["Email/Text Address"], "R&D@example.com");
  EXPECT_EQ(changes_, 1);
}

TEST_F(AlertDeliveryTest, ThePhoneNumberIsAskedForTheChosenCarrier) {
  delivery_.AskPhone();
  EXPECT_EQ(Asked().text, "Enter your 10-digit Verizon mobile phone number below:");
  EXPECT_EQ(Asked().defaultText, "1235551212");
  Answer("555");
  ASSERT_TRUE(box_.IsOpen());
  Answer("6105550123");
  // Nobody has chosen a carrier yet: the checked one's domain counts.
  EXPECT_EQ(delivery_.Caption(), "&Text Me At: 6105550123@vtext.com");
  EXPECT_EQ(settings_.saved["Email/Text Address"], "6105550123@vtext.com");
}

TEST_F(AlertDeliveryTest, ACarrierIsStoredWithNameDomainAndAddress) {
  delivery_.ChooseCarrier(3);
  EXPECT_EQ(settings_.saved["Mobile Provider Index"], "3");
  EXPECT_EQ(settings_.saved["Email/Text Address"], "1235551212@txt.att.net");
  Restart();
  EXPECT_EQ(delivery_.Caption(), "&Text Me At: 1235551212@txt.att.net");
}

TEST_F(AlertDeliveryTest, ACarrierOfTheUsersOwnNeedsBothAnswersAndStays) {
  delivery_.ChooseCarrier(8);
  settings_.saved.clear();
  for (const bool hasName : {false, true}) {
    delivery_.ChooseCarrier(kCustomCarrierEntry);
    Answer(hasName ? "Home" : "");
    if (hasName) Answer("");
    EXPECT_FALSE(box_.IsOpen());
    EXPECT_TRUE(settings_.saved.empty());
    EXPECT_EQ(delivery_.CarrierIndex(), 8);
  }
  delivery_.ChooseCarrier(kCustomCarrierEntry);
  Answer("Home");
  Answer("sms.example.com");
  Restart();
  EXPECT_EQ(delivery_.CarrierIndex(), 99);
  EXPECT_EQ(delivery_.Caption(), "&Text Me At: 1235551212@sms.example.com");
  delivery_.ChooseCarrier(1);
  EXPECT_EQ(delivery_.CustomGateway().name, "Home") << "still offered";
  delivery_.ChooseCarrier(kCustomCarrier);
  EXPECT_EQ(settings_.saved["Email/Text Address"], "1235551212@sms.example.com");
}

TEST_F(AlertDeliveryTest, OddSettingsGiveAnAddressAllTheSame) {
  const struct {
    const char* name;
    const char* custom;
    const char* customUrl;
    int index;
    const char* shown;
  } cases[] = {{"Your Mobile Provider's Name", "", "", 1, ""},
               {"Theirs", "", "", 99, "Theirs@theirs.example.com"},
               {"Theirs", "Mine", "", 99, "Theirs@theirs.example.com"},
               {"Theirs", "Mine", "mine.example.com", 99, "Mine@mine.example.com"}};
  for (const auto& row : cases) {
    settings_.values = {{"Mobile Provider Index", "99"},
                        {"Mobile Provider Name", row.name},
                        {"Mobile Provider URL", "theirs.example.com"},
                        {"Custom Mobile Provider Name", row.custom},
                        {"Custom Mobile Provider URL", row.customUrl}};
    Restart();
    EXPECT_EQ(delivery_.CarrierIndex(), row.index) << row.name;
    if (row.index == 99) {
      EXPECT_EQ(delivery_.CustomGateway().name + "@" + delivery_.CustomGateway().domain, row.shown);
    }
  }
}

TEST_F(AlertDeliveryTest, AStoredDomainCountsForTheCarrierThatItWasStoredWith) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"3", "elsewhere.example.com", "elsewhere.example.com"},
      {"3", "", "txt.att.net"},
      {"3", "Your Mobile Provider's URL", "txt.att.net"}};
  for (const auto& [index, url, domain] : cases) {
    settings_.values = {{"Mobile Provider Index", index}, {"Mobile Provider URL", url}};
    Restart();
    EXPECT_EQ(delivery_.ChosenGateway().domain, domain) << url;
  }
}

}  // namespace
}  // namespace pallomir
