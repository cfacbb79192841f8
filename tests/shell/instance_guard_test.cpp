#include "shell/instance_guard.h"

#include <gmock/gmock.h>

#include "fakes/fake_system.h"

namespace pallomir {
namespace {

constexpr char kAlready[] = "There is already a copy of Pallomir running; a new one will not be created";

// The other start takes the mutex between this one's question and its attempt.
class TakenMeanwhile : public fakes::FakeMutex {
 public:
  bool Create(const std::string& name) override {
    ownedElsewhere = taken;
    return fakes::FakeMutex::Create(name);
  }
  bool taken = false;
};

TEST(InstanceGuard, RunsOneInstanceAndSaysWhyNotAnother) {
  const struct {
    bool ownedElsewhere, taken, creatable;
    const char* message;
    std::vector<std::int64_t> raised;
  } cases[] = {
      {false, false, true, "", {}},
      {true, false, false, kAlready, {4711}},
      {false, true, false, kAlready, {4711}},
      {false, false, false, "Error 881212: CreateMutex failed", {}},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.message);
    TakenMeanwhile mutex;
    mutex.ownedElsewhere = row.ownedElsewhere;
    mutex.taken = row.taken;
    mutex.creatable = row.creatable;
    fakes::FakeRegistry registry;
    registry.values["Main Window Handle"] = "4711";
    fakes::FakeSignal signal;
    fakes::FakeQuestionBox box;
    QuestionQueue questions(box);
    int runs = 0;
    int ends = 0;
    GuardInstance(
        mutex, registry, signal, questions, [&] { ++runs; }, [&] { ++ends; });
    const bool isFirst = row.message[0] == '\0';
    EXPECT_EQ(runs, isFirst);
    EXPECT_EQ(mutex.owned, isFirst);
    if (isFirst) continue;
    EXPECT_EQ(box.shown.back().text, row.message);
    EXPECT_EQ(ends, 0);
    box.AnswerIt();
    EXPECT_EQ(ends, 1);
    EXPECT_EQ(signal.asked, row.raised);
  }
}

}  // namespace
}  // namespace pallomir
