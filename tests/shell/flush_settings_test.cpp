#include "shell/flush_settings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/fake_system.h"

namespace pallomir {
namespace {

TEST(FlushSettings, EndsWhenAllIsStoredOrTheUserGivesUp) {
  fakes::FakeSettings settings;
  fakes::FakeQuestionBox box;
  QuestionQueue questions(box);
  int ends = 0;
  const auto flush = [&] { FlushSettings(settings, questions, [&] { ++ends; }); };
  flush();
  EXPECT_EQ(ends, 1);
  settings.failure = "The disk is full.";
  flush();
  EXPECT_THAT(box.shown.back().text, testing::StartsWith("The disk is full."));
  box.AnswerIt({true, ""});
  ASSERT_TRUE(box.IsOpen()) << "tried again, and failed again";
  EXPECT_EQ(ends, 1);
  settings.failure.reset();
  box.AnswerIt({true, ""});
  EXPECT_EQ(ends, 2);
  settings.failure = "The disk is full.";
  flush();
  box.AnswerIt({false, ""});
  EXPECT_EQ(ends, 3);
}

}  // namespace
}  // namespace pallomir
