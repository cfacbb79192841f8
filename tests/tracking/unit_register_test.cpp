#include "tracking/unit_register.h"

#include <gmock/gmock.h>

#include "fakes/room_ports.h"

namespace pallomir {
namespace {

using testing::IsEmpty;

constexpr char kKey[] = "units";
constexpr char kTwo[] = "X0123456789ABFirst~-0123456789ACSecond~";

class UnitRegisterTest : public testing::Test, protected fakes::RoomPorts, protected UnitView {
 protected:
  UnitRegisterTest() {
    units_.listChanged = [this] { reports_ += "list "; };
    units_.flagsChanged = [this] { reports_ += "flags "; };
    units_.displayedChanged = [this] { reports_ += "displayed "; };
  }
  void EditUnits(const std::vector<MobileUnit>& units) override { edited_ = EncodeMobileUnits(units); }
  void ShowUnitFlags(const std::vector<MobileUnit>& units) override { flags_ = EncodeMobileUnits(units); }

  void Load(const std::string& stored) {
    settings_.values[kKey] = stored;
    units_.Load(false);
    units_.Enumerate();
    reports_.clear();
  }
  std::string List() const { return EncodeMobileUnits(units_.List()); }

  ChoiceRow<std::string> row_{kKey, ""};
  ChoiceComplaint complain_ = [](const std::string&) {};
  Choice<std::string> stored_{settings_, row_, complain_};
  UnitRegister units_{stored_, *this, questions_};
  std::string reports_, edited_, flags_;
};

TEST_F(UnitRegisterTest, AChosenSetIsStoredAndWantsToBeDisplayed) {
  const struct {
    std::function<void()> choose;
    const char* list;
  } steps[] = {
      {[this] { units_.ShowOnly(2); }, "-0123456789ABFirst~X0123456789ACSecond~"},
      {[this] { units_.Toggle(1); }, "X0123456789ABFirst~X0123456789ACSecond~"},
      {[this] { units_.Toggle(2); }, kTwo},
      {[this] { units_.ShowAll(); }, "X0123456789ABFirst~X0123456789ACSecond~"},
  };
  Load(kTwo);
  for (const auto& step : steps) {
    reports_.clear();
    step.choose();
    EXPECT_EQ(settings_.saved[kKey], step.list);
    EXPECT_EQ(flags_, step.list) << "for an editor that is open";
    EXPECT_EQ(reports_, "flags displayed ");
    EXPECT_EQ(units_.Book().requestText, "D0123456789AB") << "until the reload the old books hold";
  }
  units_.Enumerate();
  EXPECT_EQ(units_.Book().requestText, "D0123456789AB0123456789AC");
  reports_.clear();
  for (const std::size_t nobody : {0u, 3u}) {
    units_.ShowOnly(nobody);
    units_.Toggle(nobody);
  }
  EXPECT_EQ(reports_, "");
  EXPECT_EQ(List(), "X0123456789ABFirst~X0123456789ACSecond~");
}

TEST_F(UnitRegisterTest, AnAppliedListIsStoredAndDisplayedOnYes) {
  Load(kTwo);
  units_.Edit();
  EXPECT_EQ(edited_, kTwo);
  for (const bool yes : {false, true}) {
    reports_.clear();
    units_.Apply({{true, "00000000000F", "New"}});
    EXPECT_EQ(settings_.saved[kKey], "X00000000000FNew~");
    EXPECT_EQ(box_.shown.back().text, "Do you want to reload the map now?");
    EXPECT_EQ(reports_, "list ") << "the books wait for the answer";
    box_.AnswerIt({yes, ""});
    EXPECT_EQ(reports_, yes ? "list displayed " : "list ");
  }
}

TEST_F(UnitRegisterTest, DemoUnitsAreChangedForThisRunOnly) {
  settings_.values[kKey] = kTwo;
  units_.Load(true);
  EXPECT_TRUE(units_.AreDemo());
  EXPECT_EQ(List(), DemoMobileUnits());
  EXPECT_EQ(reports_, "list ");
  units_.ShowOnly(9);
  units_.Apply({{true, "00000000000F", "New"}});
  EXPECT_EQ(List(), "X00000000000FNew~");
  EXPECT_THAT(settings_.saved, IsEmpty());
  EXPECT_THAT(settings_.order, IsEmpty()) << "the user's units are no part of the demo";
}

TEST_F(UnitRegisterTest, WhyNoneIsDisplayedIsTold) {
  const std::tuple<const char*, const char*, Question::Icon> cases[] = {
      {"", "Warning: no mobile unit(s) defined", Question::Icon::kExclamation},
      {"-0123456789ABOnly~", "Note: the mobile unit is not enabled", Question::Icon::kInformation},
      {"-0123456789ABOne~-0123456789ACTwo~", "Note: none of the defined mobile units are enabled",
       Question::Icon::kInformation},
  };
  for (const auto& [stored, text, icon] : cases) {
    Load(stored);
    int answered = 0;
    units_.TellNoneDisplayed([&answered] { ++answered; });
    EXPECT_EQ(box_.shown.back().text, text);
    EXPECT_EQ(box_.shown.back().icon, icon) << text;
    EXPECT_EQ(answered, 0) << text;
    box_.AnswerIt();
    EXPECT_EQ(answered, 1) << text;
  }
}

}  // namespace
}  // namespace pallomir
