#include <gmock/gmock.h>

#include "tracking/fed.h"

namespace pallomir {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pair;
using testing::SizeIs;

class DataFeedTest : public testing::Test, protected Fed {};

TEST_F(DataFeedTest, ABatchIsToldAsOne) {
  data.arrived(Joined({Packet({31, 32}, "0123456789AC"), Packet({30, 31}, "0123456789AC"),
                       Packet({20}, "0123456789AA"), Packet({40, 41}, "0123456789AC", 91),
                       Packet({}, "FFFFFFFFFFFF")}));
  EXPECT_EQ(Points(), 0u) << "the rest of what was split may still come";
  loop.Advance(100);
  EXPECT_EQ(told, "arrived decoding moved merged ");
  EXPECT_EQ(Points(), 3u);
  EXPECT_THAT(batch.units, ElementsAre(2u));
  EXPECT_THAT(batch.earliest, ElementsAre(Pair(2u, *EncodePackedTime(kNoon + 30 * kSecond))));
  EXPECT_EQ(batch.leftOut, 2u);
  EXPECT_EQ(newest, feed->Points().Track(2).Points().back());
  feed->Forget();
  told.clear();
  Arrive(Packet({}));
  EXPECT_EQ(told, "arrived decoding merged ");
  EXPECT_FALSE(newest);
}

TEST_F(DataFeedTest, ABatchThatComesInPartsIsOneToo) {
  const Bytes second = Packet({30, 31}, "0123456789AC");
  Arrive(Joined({Packet({10}), Bytes(second.begin(), second.begin() + 30)}));
  EXPECT_EQ(told, "arrived decoding moved ");
  Arrive(Bytes(second.begin() + 30, second.begin() + 40));
  EXPECT_EQ(told, "arrived decoding moved arrived decoding ") << "no point has moved for that";
  Arrive(Bytes(second.begin() + 40, second.end()));
  EXPECT_THAT(batch.units, ElementsAre(1u, 2u));
}

TEST_F(DataFeedTest, APacketSplitAnywhereIsDecodedWhenTheRestArrives) {
  const Bytes packet = Packet({0, 60});
  for (std::size_t cut = 1; cut < packet.size(); ++cut) {
    Fed fed;
    fed.data.arrived(ByteView(packet).first(cut));
    fed.loop.Advance(60);
    fed.data.arrived(ByteView(packet).subspan(cut));
    fed.loop.Advance(100);
    ASSERT_EQ(fed.Points(), 2u) << cut;
    ASSERT_EQ(fed.Trouble(), "") << cut;
  }
}

TEST_F(DataFeedTest, BrokenStreamsAreToldAndForgotten) {
  Bytes odd = Packet({0});
  odd[7] = 41;
  Bytes negative = odd;
  negative[4] = 0xFF;
  Bytes flipped = Packet({0});
  flipped[25] ^= 1;
  const std::tuple<Bytes, const char*, std::size_t> cases[] = {
      {{1, 2, 3}, "Error: Packet size of 3 is less than 8", 0},
      {odd, "Error: Packet size of 41 is not a multiple of 14", 0},
      {negative, "Error: Packet size of -16777175 is not a multiple of 14", 0},
      {flipped, "", 0},
      {Joined({Packet({0}), {1, 2, 3}}), "Error: Packet size of 3 is less than 8", 1},
  };
  for (const auto& [stream, message, points] : cases) {
    Fed fed;
    fed.Arrive(stream);
    fed.loop.Advance(100);
    EXPECT_EQ(fed.Trouble(), message);
    EXPECT_EQ(fed.Points(), points) << message;
  }
}

TEST_F(DataFeedTest, OnlyTheUserEndsTheHold) {
  Arrive(Packet({0}));
  told.clear();
  Arrive(Packet({60}));
  EXPECT_EQ(Points(), 1u);
  feed->TakeInHeld();
  EXPECT_EQ(Points(), 2u) << "at once";
  feed->Restart();
  Connect();
  feed->TakeInHeld();
  EXPECT_EQ(Points(), 2u) << "what came over the old connection is gone";
  for (const int second : {180, 181}) Arrive(Packet({second}));
  feed->Forget();
  EXPECT_EQ(Points(), 0u);
  Arrive(Packet({182}));
  EXPECT_EQ(Points(), 2u) << "both";
}

TEST_F(DataFeedTest, WhatIsTakenInDuringThePauseEndsTheBatchOnce) {
  data.arrived(Packet({0}));
  feed->TakeInHeld();
  told.clear();
  loop.Advance(100);
  EXPECT_EQ(told, "");
  feed->TakeInHeld();
  data.arrived(Bytes{1, 2, 3});
  feed->TakeInHeld();
  EXPECT_EQ(Trouble(), "") << "a split header still has its pause";
}

TEST_F(DataFeedTest, NothingIsDecodedWhileThePointsAreDrawn) {
  isDrawing = true;
  Arrive(Packet({0}));
  loop.Advance(300);
  EXPECT_EQ(Points(), 0u);
  isDrawing = false;
  loop.Advance(100);
  EXPECT_EQ(Points(), 1u);
}

TEST_F(DataFeedTest, TheSenderIsHeldUpWhereTooMuchWaits) {
  const auto fill = [this] {
    data.arrived(Bytes(PacketStream::kMaxPending - 1));
    EXPECT_TRUE(data.reading);
    data.arrived(Bytes(1));
    EXPECT_FALSE(data.reading);
  };
  fill();  // a pause that is repeated while tiles are drawn
  loop.Advance(100);
  EXPECT_TRUE(data.reading);
  box.AnswerIt();
  feed->Restart();
  Connect();
  Arrive(Packet({0}));
  fill();  // the hold
  feed->Restart();
  EXPECT_TRUE(data.reading);
}

TEST_F(DataFeedTest, FailuresGoThroughTheRetryDialog) {
  const std::size_t asked = locator.sent.size();
  data.failed({10054, "The connection was reset.", 104});
  ASSERT_TRUE(view.retry);
  EXPECT_EQ(*view.retry, "Error 855713/10054-1: \n\nWS_Client_C\nThe connection was reset.\nScode = 104");
  loop.Advance(93 * 94);
  EXPECT_EQ(view.retryLabel, "Retrying in 1 Seconds");
  EXPECT_EQ(view.retryBar, 93);
  EXPECT_THAT(locator.sent, SizeIs(asked));
  loop.Advance(7 * 94);
  EXPECT_FALSE(view.retry);
  EXPECT_THAT(locator.sent, SizeIs(asked + 1));
  probe.failed({kErrorRefused, "", 111});
  EXPECT_THAT(*view.retry, HasSubstr("Error 855712/10061-2: \nThe Pallomir Base Server is rejecting"));
  EXPECT_EQ(view.retryBar, 0) << "each counts from the beginning";
  feed->StopRetrying();
  EXPECT_FALSE(view.retry);
  loop.Advance(20'000);
  EXPECT_THAT(locator.sent, SizeIs(asked + 1)) << "no countdown is left";
  feed->Restart();
  probe.failed({kErrorTimedOut, "", 110});
  feed->EndSession();
  EXPECT_FALSE(view.retry);
  EXPECT_EQ(told, "end ");
}

TEST_F(DataFeedTest, CaptionAndLampTellEachSecondHowItStands) {
  loop.Advance(5000);
  EXPECT_EQ(view.lamp.tip, "");
  feed->BeginTelling();
  clock.now = kNoon + 5 * kMinute + 17 * kSecond;
  Arrive(Packet({0, 60, 86'400}));
  hasUndrawnPoints = true;
  note = "Starting";
  loop.Advance(1000);
  EXPECT_EQ(view.caption, "Pallomir  00:04:17  3 Data Points");
  EXPECT_EQ(view.lamp.tip, "Not drawn yet: press F\n1 data point is dated later than now\nStarting");
  units = EnumerateUnits({});
  feed->Forget();
  view.caption = "as it was";
  loop.Advance(1000);
  EXPECT_EQ(view.caption, "as it was");
  EXPECT_THAT(view.lamp.tip, HasSubstr("No mobile units enabled"));
}

TEST_F(DataFeedTest, AfterTheEndNothingIsToldOrAsked) {
  feed->BeginTelling();
  data.arrived(Packet({0}));
  data.failed({10054, "", 104});
  feed->Close();
  EXPECT_TRUE(locator.closed && probe.closed && data.closed);
  const std::size_t asked = locator.sent.size();
  told.clear();
  view.caption.clear();
  loop.Advance(60'000);
  EXPECT_EQ(told + view.caption, "");
  EXPECT_THAT(locator.sent, SizeIs(asked));
}

}  // namespace
}  // namespace pallomir
