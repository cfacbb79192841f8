#include <gmock/gmock.h>

#include "base/packed_time.h"
#include "tracking/fed.h"

namespace pallomir {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

using State = ServerConnection::State;

TEST(Reconnect, WaitsLongerAndLongerUpToAFifthMoreOrLess) {
  fakes::FakeEventLoop loop;
  int asked = 0;
  Reconnect reconnect(loop, 20261122, [&] { ++asked; });
  const auto delay = [&] {
    const long long begin = loop.Now();
    for (const int before = asked; asked == before; loop.Advance(100)) reconnect.Wait();
    return static_cast<int>(loop.Now() - begin - 100);
  };
  std::set<int> long_;
  for (const int seconds : {1, 2, 5, 10, 30, 30, 30, 30, 30, 30}) {
    const int waited = delay();
    EXPECT_GE(waited, seconds * 800 - 100);
    EXPECT_LE(waited, seconds * 1200 + 100);
    if (seconds == 30) long_.insert(waited);
  }
  EXPECT_GT(long_.size(), 3u) << "not all at once";
  reconnect.Stop();
  EXPECT_GT(delay(), 20'000) << "an end of the wait proves nothing";
  reconnect.Reset();
  reconnect.Wait();
  EXPECT_THAT(reconnect.SecondsLeft(), testing::AnyOf(1, 2));
  EXPECT_LT(delay(), 1400);
}

TEST(LiveWatch, TellsWhenTheConnectionHasToBeMadeAnew) {
  using Advice = LiveWatch::Advice;
  struct Row {
    const char* what;
    LiveWatch::Facts facts;  // but for the clock
    Millis jump;             // of the clock at the last look, beyond its second
    int looks;
    Advice last;  // all before advise nothing
  };
  const Millis end = kNoon + kDay;
  const LiveWatch::Facts streams{State::kStreaming, false, false, 0, end, end};
  const auto in = [&](State state, bool isWaiting = false) {
    LiveWatch::Facts facts = streams;
    facts.state = state;
    facts.isWaiting = isWaiting;
    return facts;
  };
  const LiveWatch::Facts gap{State::kStreaming, false, true, 0, end, end};
  const LiveWatch::Facts ending{State::kStreaming, false, false, 0, kNoon + kHour + 9 * kSecond, end};
  const LiveWatch::Facts past{State::kStreaming, false, false, 0, kNoon - kHour, kNoon - kHour};
  const Row rows[] = {
      {"a server with nothing to say", streams, 0, 119, Advice::kNothing},
      {"or none", streams, 0, 120, Advice::kAskAnew},
      {"an ordinary hiccup", streams, 10 * kSecond, 5, Advice::kNothing},
      {"sleep", streams, 11 * kSecond, 5, Advice::kAskAnew},
      {"a clock put back", streams, -11 * kSecond, 5, Advice::kAskAnew},
      {"while it is looked for", in(State::kLocating), kHour, 5, Advice::kAskAnew},
      {"while it is called", in(State::kConnecting), kHour, 5, Advice::kAskAnew},
      {"sleep in a wait", in(State::kReporting, true), kHour, 5, Advice::kAskAnew},
      {"nobody waits", in(State::kClosedByServer), kHour, 500, Advice::kNothing},
      {"nobody answers", in(State::kProbing), 0, 30, Advice::kGiveUp},
      {"the user stopped it", in(State::kIdle), kHour, 500, Advice::kNothing},
      {"units that come back", gap, 0, 29, Advice::kNothing},
      {"are asked for together", gap, 0, 30, Advice::kAskAnew},
      {"the end of what was asked for is far", ending, 0, 10, Advice::kNothing},
      {"or not", ending, 0, 11, Advice::kAskAnew},
      {"a window of the past ends nowhere", past, 0, 500, Advice::kNothing},
  };
  for (const Row& row : rows) {
    LiveWatch watch;
    LiveWatch::Facts facts = row.facts;
    facts.nowUtc = kNoon;
    for (int look = 1; look <= row.looks; ++look) {
      facts.nowUtc += look == 1 ? 0 : kSecond;
      if (look == row.looks) facts.nowUtc += row.jump;
      EXPECT_EQ(watch.Look(facts), look == row.looks ? row.last : Advice::kNothing) << row.what << look;
    }
  }
  LiveWatch watch;
  for (int look = 0; look < 29; ++look) watch.Look(streams);
  EXPECT_FALSE(watch.HasSettled());
  watch.Look(streams);
  EXPECT_TRUE(watch.HasSettled());
  watch.Look(in(State::kClosedByServer, true));
  EXPECT_FALSE(watch.HasSettled());
}

std::vector<DataPoint> Rows(std::initializer_list<int> minutes) {
  std::vector<DataPoint> rows;
  for (const int minute : minutes) rows.push_back({*EncodePackedTime(kNoon + minute * kMinute), 0, 0, 0});
  return rows;
}

TEST(Coverage, ARequestBeginsWhereTheStreamBrokeOff) {
  const Millis now = kNoon + 10 * kHour;
  const auto asked = [](Coverage& coverage) { return (coverage.Ask(kNoon, false) - kNoon) / kMinute; };
  Coverage coverage;
  coverage.Reset(2);
  EXPECT_EQ(asked(coverage), 0);
  coverage.Take(1, Rows({0, 500}), now);
  EXPECT_EQ(asked(coverage), 0) << "the other unit's part of that time was still to come";
  coverage.Take(1, Rows({500}), now);
  coverage.Take(2, Rows({300, 301}), now);
  EXPECT_EQ(asked(coverage), 490) << "ten minutes for late ones";
  coverage.Take(1, Rows({604, 606}), now);
  EXPECT_EQ(asked(coverage), 594) << "points of the future are none";
  coverage.Take(1, Rows({606}), now);
  EXPECT_EQ(asked(coverage), 594);
  EXPECT_FALSE(coverage.HasGap());
  coverage.Take(2, Rows({600}), now);
  EXPECT_TRUE(coverage.HasGap()) << "what it did between 301 and 594 was never asked for";
  EXPECT_EQ(asked(coverage), 291);
  EXPECT_FALSE(coverage.HasGap()) << "now it is";
  EXPECT_EQ(asked(coverage), 291) << "but has not come";
  coverage.Take(2, Rows({300, 600}), now);
  EXPECT_EQ(asked(coverage), 594);
  EXPECT_EQ(coverage.Ask(kNoon, true), kNoon);
  coverage.Reset(2);
  EXPECT_EQ(asked(coverage), 0);
}

class LiveFeedTest : public testing::Test, protected Fed {
 protected:
  LiveFeedTest() {
    clock.now = kNoon + kHour;
    feed->BeginTelling();
    feed->SetLive(true);
    Arrive(Packet({0}));
    told.clear();
  }
  void Pass(int seconds) {
    for (int i = 0; i < seconds; ++i) {
      clock.now += kSecond;
      loop.Advance(1000);
    }
  }
  // The second after which the locator was asked again; 0: not within a minute.
  int SecondsUntilAsked() {
    const std::size_t before = locator.sent.size();
    for (int second = 1; second <= 60; ++second) {
      Pass(1);
      if (locator.sent.size() > before) return second;
    }
    return 0;
  }
};

TEST_F(LiveFeedTest, BatchesAreTakenInAsTheyCome) {
  Arrive(Packet({60}));
  EXPECT_EQ(told, "decoding merged ") << "what lies under the pointer stays: no point has another index";
  EXPECT_TRUE(batch.isLive);
  EXPECT_FALSE(batch.breaksSilence);
  told.clear();
  Arrive(Packet({60}));
  EXPECT_EQ(told, "decoding ") << "nothing new";
  told.clear();
  Arrive(Packet({30, 90}));
  EXPECT_EQ(told, "decoding moved merged ");
  EXPECT_EQ(Points(), 4u);
  clock.now += 10 * kMinute;
  Arrive(Packet({700}));
  EXPECT_TRUE(batch.breaksSilence);
  feed->SetLive(false);
  Arrive(Packet({701}));
  EXPECT_EQ(Points(), 5u) << "the hold is back";
  feed->SetLive(true);
  loop.Advance(100);
  EXPECT_EQ(Points(), 6u);
}

TEST_F(LiveFeedTest, AUnitThatNeverPausesIsToldOfTenTimesASecondAtMost) {
  std::string all;
  for (int i = 0; i < 1000; ++i) {
    data.arrived(Packet({1000 + i}));
    loop.Advance(10);
  }
  const auto merged = [this] { return std::ranges::count(told, 'g'); };  // of "merged", "decoding"
  EXPECT_LE(merged(), 2 * 100);
  EXPECT_GE(merged(), 2 * 80);
  told.clear();
  const Bytes two = Joined({Packet({3000}), Packet({3001})});
  const auto middle = two.begin() + 60;  // inside the second one
  for (int i = 0; i < 20; ++i) {
    data.arrived(Bytes(i ? middle : two.begin(), two.end()));
    data.arrived(Bytes(two.begin(), middle));
    loop.Advance(100);
  }
  EXPECT_THAT(told, HasSubstr("merged")) << "though no packet ended where the buffer ended";
}

TEST_F(LiveFeedTest, ALostConnectionIsMadeAnewWithoutADialog) {
  data.failed({10054, "The connection was reset.", 104});
  EXPECT_FALSE(view.retry);
  EXPECT_THAT(view.lamp.word, HasSubstr("No connection: trying again in "));
  EXPECT_LE(SecondsUntilAsked(), 2);
  Connect();
  EXPECT_THAT(data.sent.back(), HasSubstr("~2026-11-22 12:00:00~"))
      << "ten minutes back is before the window";
  Arrive(Packet({1800}));
  data.closedByPeer();
  SecondsUntilAsked();
  Connect();
  EXPECT_THAT(data.sent.back(), HasSubstr("~2026-11-22 12:20:00~"));
  int last = 0;
  for (int i = 0; i < 6; ++i) {  // closes at once, or brings only what is known
    if (i % 2) Arrive(Packet({1800}));
    data.closedByPeer();
    last = SecondsUntilAsked();
    Connect();
  }
  EXPECT_GE(last, 24) << "no flood";
  Pass(31);
  data.closedByPeer();
  EXPECT_LE(SecondsUntilAsked(), 2) << "one that held is a good one";
}

TEST_F(LiveFeedTest, SwitchedOffWhileItWaitsTheDialogComes) {
  data.failed({10054, "The connection was reset.", 104});
  feed->SetLive(false);
  ASSERT_TRUE(view.retry);
  EXPECT_THAT(*view.retry, HasSubstr("The connection was reset."));
  feed->SetLive(true);
  EXPECT_FALSE(view.retry);
  EXPECT_EQ(feed->Connection().CurrentState(), State::kLocating);
  Connect();
  data.closedByPeer();
  feed->SetLive(false);
  EXPECT_FALSE(view.retry) << "an end in good order never had one";
  EXPECT_EQ(SecondsUntilAsked(), 0);
}

TEST_F(LiveFeedTest, EmptyAnswersOfTheLocatorNeverEndInAMessage) {
  data.closedByPeer();
  for (int i = 0; i < 5; ++i) {
    if (i == 3)
      feed->Restart();
    else
      SecondsUntilAsked();
    locator.arrived(fakes::LocatorAnswer(""));
  }
  EXPECT_EQ(Trouble(), "");
  EXPECT_FALSE(view.retry);
  EXPECT_GT(SecondsUntilAsked(), 0);
}

TEST_F(LiveFeedTest, ADamagedStreamIsAskedForAgain) {
  Bytes flipped = Packet({60});
  flipped[25] ^= 1;
  for (const Bytes& damaged : {flipped, Bytes{1, 2, 3, 4, 5, 6, 7}}) {
    Arrive(damaged);
    EXPECT_EQ(Trouble(), "");
    EXPECT_TRUE(data.closed);
    EXPECT_GT(SecondsUntilAsked(), 0);
    Connect();
  }
}

TEST_F(LiveFeedTest, SleepOrSilenceHaveTheServerAskedAnew) {
  Pass(2);
  clock.now += 8 * kHour;
  EXPECT_EQ(SecondsUntilAsked(), 1);
  EXPECT_EQ(feed->Connection().CurrentState(), State::kLocating);
  Connect();
  Pass(100);
  Arrive(Packet({4000}));
  EXPECT_EQ(SecondsUntilAsked(), 0) << "not so soon after that";
  EXPECT_GT(SecondsUntilAsked(), 0);
  feed->SetLive(false);
  Connect();
  clock.now += 8 * kHour;
  EXPECT_EQ(SecondsUntilAsked(), 0);
}

}  // namespace
}  // namespace pallomir
