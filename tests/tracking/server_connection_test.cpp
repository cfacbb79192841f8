#include "tracking/server_connection.h"

#include <gmock/gmock.h>

#include "fakes/fake_event_loop.h"
#include "fakes/fake_network.h"
#include "tracking/packets.h"

namespace pallomir {
namespace {

using fakes::LocatorAnswer;
using State = ServerConnection::State;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr char kUnit[] = "0123456789AB";

// A connection with the ends of its wires, and what it told.
struct Wired {
  static ServerConnection::Host HostOf(Wired& test) {
    ServerConnection::Host host;
    host.closedByServer = [] {};
    host.locatorRequest = [&test] { return "D" + test.units; };
    host.dataRequest = [&test] { return test.units.empty() ? "" : test.units + "~~"; };
    host.portBase = [] { return 18801; };
    host.caption = [&test](const std::string& text) { test.caption = text; };
    host.message = [&test](const std::string& text) { test.messages.push_back(text); };
    host.report = [&test](const std::string& code, const std::string& text) {
      test.reports.push_back(code + text);
    };
    host.arrived = [](ByteView) {};
    return host;
  }

  void Answered() { locator.arrived(LocatorAnswer("7F0000091234")); }
  void Streaming() {
    Answered();
    probe.connected();
    data.connected();
  }

  std::string units = kUnit;
  fakes::FakeDatagramEndpoint locator;
  fakes::FakeStreamEndpoint probe, data;
  fakes::FakeEventLoop loop;
  Trace trace{[] { return 0.0; }, [](const std::string&) {}};
  std::string caption;
  std::vector<std::string> messages, reports;
  ServerConnection connection{{locator, probe, data}, loop, trace, HostOf(*this)};
};

class ServerConnectionTest : public testing::Test, protected Wired {};

TEST_F(ServerConnectionTest, AQuestionThatWasLostIsAskedAgain) {
  connection.Restart();
  const std::pair<int, std::size_t> steps[] = {{0, 1},    {2999, 1}, {3000, 2},
                                               {7999, 2}, {8000, 3}, {14'999, 3}};
  for (const auto& [until, asked] : steps) {
    loop.Advance(until - static_cast<int>(loop.Now()));
    EXPECT_THAT(locator.sent, SizeIs(asked)) << until;
  }
  EXPECT_THAT(locator.connections, SizeIs(1)) << "over the same port, where an answer may still come";
  loop.Advance(1);
  EXPECT_THAT(reports, ElementsAre("843898/10060\n\nThe Pallomir Website Server does not answer."));
  connection.Retry();
  loop.Advance(2500);
  Answered();
  loop.Advance(20'000);
  EXPECT_THAT(locator.sent, SizeIs(4)) << "an answered question is not asked again";
  EXPECT_THAT(reports, SizeIs(1));
}

TEST_F(ServerConnectionTest, AnAnswerThatCannotBeUsedIsNamedWhenTheTimeIsOver) {
  Bytes mismatch = LocatorAnswer("7F0000091234");
  mismatch.back() = '5';
  Bytes empty = LocatorAnswer("");
  empty[0] ^= 1;
  const std::pair<Bytes, const char*> cases[] = {
      {Bytes(17, '0'), "it has 17 characters; there should be 18."},
      {mismatch, "its check code is wrong."},
      {empty, "its check code is wrong."},
      {LocatorAnswer("7F00000912GG"), "there is no address in it."}};
  // One problem has been reported, and the user reloads without a retry: the next one is no dialog at once.
  connection.Restart();
  locator.arrived(Bytes(5));
  for (const auto& [answer, reason] : cases) {
    connection.Restart();
    locator.arrived(answer);
    const std::size_t before = reports.size();
    EXPECT_EQ(connection.CurrentState(), State::kLocating) << reason;
    loop.Advance(14'999);
    EXPECT_THAT(reports, SizeIs(before)) << reason;
    loop.Advance(1);
    ASSERT_THAT(reports, SizeIs(before + 1)) << reason;
    EXPECT_EQ(reports.back(), std::string("843898/10060\n\nThe Pallomir Website Server answered, but its "
                                          "answer can't be used: ") +
                                  reason);
  }
  connection.Restart();
  loop.Advance(15'000);
  EXPECT_THAT(reports.back(), HasSubstr("does not answer")) << "the next silence is one";
}

TEST_F(ServerConnectionTest, WithoutUnitsItConnectsAsksForNothingAndBothersNobody) {
  units.clear();
  connection.Restart();
  EXPECT_EQ(locator.sent.back().substr(6), "D");
  Streaming();
  EXPECT_THAT(data.sent, IsEmpty());
  EXPECT_EQ(connection.CurrentState(), State::kStreaming);

  const std::function<void()> troubles[] = {[this] { locator.arrived(LocatorAnswer("")); },
                                            [this] { locator.arrived(Bytes(17)); },
                                            [this] { loop.Advance(15'000); },
                                            [this] {
                                              Streaming();
                                              data.failed({10054, "", 104});
                                            }};
  for (const auto& trouble : troubles) {
    for (int again = 0; again < 2; ++again) {
      connection.Restart();
      trouble();
      EXPECT_EQ(connection.CurrentState(), State::kIdle);
    }
  }
  loop.Advance(60'000);
  EXPECT_THAT(reports, IsEmpty());
  EXPECT_THAT(messages, IsEmpty());
  units = kUnit;
  connection.Restart();
  locator.arrived(LocatorAnswer(""));
  EXPECT_THAT(reports, SizeIs(1)) << "the first problem of units that are wanted is one";
}

TEST_F(ServerConnectionTest, MoreUnitsThanADatagramHoldsAreToldBeforeItIsSent) {
  units.clear();
  for (int i = 0; i < 5458; ++i) units += kUnit;
  connection.Restart();
  EXPECT_THAT(messages, IsEmpty());
  ASSERT_THAT(locator.sent, SizeIs(1));
  EXPECT_LE(locator.sent[0].size(), 65'507u);
  units += kUnit;
  connection.Restart();
  EXPECT_THAT(locator.sent, SizeIs(1));
  EXPECT_EQ(connection.CurrentState(), State::kIdle);
  EXPECT_THAT(messages, ElementsAre(HasSubstr("5459 mobile units are enabled")));
}

TEST_F(ServerConnectionTest, AnAnswerMayNameMoreServersOrNone) {
  for (const std::size_t length : {0u, 7u, 17u, 19u}) {
    connection.Retry();
    locator.arrived(Bytes(length, '0'));
    EXPECT_THAT(reports.back(),
                HasSubstr("166308Wrong string length; should be 18, not " + std::to_string(length) + "\n"));
  }
  connection.Retry();
  Bytes reply = LocatorAnswer("7F0000011234");
  reply.back() = '5';
  locator.arrived(reply);
  EXPECT_THAT(caption, HasSubstr("Error: HashCode mismatch; should be "));
  EXPECT_THAT(probe.connections, IsEmpty());
  locator.arrived(LocatorAnswer("7F00000112347F0000021234"));
  EXPECT_THAT(probe.connections, ElementsAre("127.0.0.1:18799"));
  EXPECT_EQ(caption, "IP Address of Home Server = 127.0.0.1, Port Number = 18799");
  EXPECT_EQ(connection.CurrentState(), State::kProbing);
  locator.arrived(LocatorAnswer("7F0000021234"));
  EXPECT_THAT(probe.connections, SizeIs(1)) << "nobody waits for those any more";
  EXPECT_EQ(connection.CurrentState(), State::kProbing);
}

TEST_F(ServerConnectionTest, ALocatorProblemIsReportedOnceUntilItIsRetried) {
  const struct {
    const char* between;
    void (*happen)(Wired& wired);
    std::vector<const char*> codes;  // reported
    const char* message;             // told instead of a second report
  } cases[] = {
      {"retried", [](Wired& wired) { wired.connection.Retry(); }, {"634298", "634298"}, ""},
      {"reloaded", [](Wired& wired) { wired.connection.Restart(); }, {"634298"}, "Error 501332: "},
      {"retried together with a later failure",
       [](Wired& wired) {
         wired.locator.failed({10061, "", 111});
         wired.connection.Retry();
       },
       {"634298", "843898", "634298"},
       ""},
      {"another failure was retried",
       [](Wired& wired) {
         wired.connection.Restart();
         wired.Streaming();
         wired.data.failed({10054, "", 104});
         wired.connection.Retry();
       },
       {"634298", "855713"},
       "Error 501332: "},
  };
  for (const auto& c : cases) {
    Wired wired;
    wired.connection.Restart();
    wired.locator.arrived(LocatorAnswer(""));
    c.happen(wired);
    EXPECT_EQ(wired.connection.CurrentState(), State::kLocating) << c.between;
    wired.locator.arrived(LocatorAnswer(""));
    ASSERT_THAT(wired.reports, SizeIs(c.codes.size())) << c.between;
    for (std::size_t i = 0; i < c.codes.size(); ++i)
      EXPECT_EQ(wired.reports[i].substr(0, 6), c.codes[i]) << c.between;
    EXPECT_EQ(wired.messages.empty() ? "" : wired.messages[0].substr(0, 14), c.message) << c.between;
    EXPECT_EQ(wired.connection.CurrentState(), *c.message ? State::kIdle : State::kReporting) << c.between;
  }
}

}  // namespace
}  // namespace pallomir
