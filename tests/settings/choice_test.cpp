#include "settings/choice.h"

#include <gmock/gmock.h>

#include "fakes/fake_system.h"

namespace pallomir {
namespace {

constexpr const char* kTexts[] = {"Nothing", "Some", "All"};
constexpr ChoiceRow<int> kPort{"Port", 50, 1, 99, 200};
constexpr ChoiceRow<int> kMeasure{"Measure", 7, 0, 1000, {}, {}, true};
constexpr ChoiceRow<int> kAmount{"Amount", 2, 0, 2, {}, kTexts};
constexpr ChoiceRow<bool> kDemo{"Demo", true};
constexpr ChoiceRow<bool> kLarge{"Large", true, "2", "0", true};

class ChoiceTest : public testing::Test {
 protected:
  template <class T>
  T Read(const ChoiceRow<T>& row, const char* stored) {
    settings_.values[std::string(row.key)] = stored;
    complaints_.clear();
    Choice<T> choice(settings_, row, complain_);
    choice.Read();
    return choice.Value();
  }

  fakes::FakeSettings settings_;
  std::vector<std::string> complaints_;
  ChoiceComplaint complain_ = [this](const std::string& line) { complaints_.push_back(line); };
};

TEST_F(ChoiceTest, NumbersOutOfRangeAndOtherTextsAreTheInitialValue) {
  const std::tuple<const ChoiceRow<int>&, const char*, int, bool> cases[] = {
      {kPort, "1", 1, true},        {kPort, "99", 99, true},          {kPort, "200", 200, true},
      {kPort, "0", 50, false},      {kPort, "100", 50, false},        {kPort, "", 50, false},
      {kPort, "1.5", 50, false},    {kPort, "4294967297", 50, false}, {kMeasure, "12.9", 12, true},
      {kMeasure, "-40", 0, true},   {kMeasure, "1000", 1000, true},   {kMeasure, "1000.5", 7, false},
      {kMeasure, "wide", 7, false}, {kAmount, "Nothing", 0, true},    {kAmount, "Some", 1, true},
      {kAmount, "some", 2, false},  {kAmount, "1", 2, false},
  };
  for (const auto& [row, stored, value, isLegal] : cases) {
    EXPECT_EQ(Read(row, stored), value) << row.key << " " << stored;
    EXPECT_EQ(complaints_.empty(), isLegal) << row.key << " " << stored;
  }
  EXPECT_EQ(complaints_.back(), "setting \"Amount\" has no use for \"1\": taken as \"All\"");
}

TEST_F(ChoiceTest, FlagsHaveTheirOwnTexts) {
  EXPECT_TRUE(Read(kDemo, "True"));
  EXPECT_FALSE(Read(kDemo, "False"));
  EXPECT_TRUE(complaints_.empty());
  EXPECT_TRUE(Read(kDemo, "false"));
  EXPECT_EQ(complaints_.size(), 1u);
  EXPECT_TRUE(Read(kLarge, "2"));
  EXPECT_FALSE(Read(kLarge, "1"));
  EXPECT_TRUE(complaints_.empty()) << "anything else is off";
}

TEST_F(ChoiceTest, WhatIsStoredIsTheTextAndOnlyWhereItIsAnother) {
  Choice<int> amount(settings_, kAmount, complain_);
  amount.Read();
  EXPECT_EQ(settings_.values["Amount"], "All") << "the file gets the initial value";
  amount.Store(1);
  EXPECT_EQ(settings_.saved["Amount"], "Some");

  settings_.values["Measure"] = "12.9";
  Choice<int> measure(settings_, kMeasure, complain_);
  measure.ReadOr(300);
  EXPECT_EQ(measure.Value(), 12);
  measure.StoreIfOther(12);
  EXPECT_EQ(settings_.saved["Measure"], "12");
  settings_.saved.clear();
  measure.StoreIfOther(12);
  EXPECT_TRUE(settings_.saved.empty());
  settings_.values["Measure"] = "";
  measure.ReadOr(300);
  EXPECT_EQ(measure.Value(), 300);
}

}  // namespace
}  // namespace pallomir
