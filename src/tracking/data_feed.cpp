#include "tracking/data_feed.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "tracking/connection_lamp.h"
#include "tracking/data_age.h"

namespace pallomir {
namespace {

constexpr int kPauseMilliseconds = 100;
constexpr int kTellMilliseconds = 1000;
// A stream without a pause is told of so often, in pauses of the first kind.
constexpr int kMostPartsOfBatch = 10;
constexpr Millis kSilence = 10 * kMinute;

std::string FirstLine(const std::string& text) {
  const std::size_t begin = text.find_first_not_of('\n');
  return begin == text.npos ? "" : text.substr(begin, text.find('\n', begin) - begin);
}

}  // namespace

DataFeed::DataFeed(const FeedPorts& ports, FeedView& view, const UnitBook& units, const Choice<int>& portBase,
                   Host host)
    : ports_(ports),
      view_(view),
      units_(units),
      portBase_(portBase),
      host_(std::move(host)),
      connection_(ports.network, ports.loop, ports.trace, ConnectionHost()),
      retry_(view, ports.loop, [this] { RetryNow(); }),
      reconnect_(ports.loop, static_cast<std::uint64_t>(ports.clock.NowUtc()), [this] { AskAnew(); }) {
  dataPause_ = ports.loop.CreateTimer("DataPause", kPauseMilliseconds, [this] { OnPause(); });
  lastUpdateTimer_ = ports.loop.CreateTimer("LastUpdateTimer", kTellMilliseconds, [this] { TellAge(); });
}

ServerConnection::Host DataFeed::ConnectionHost() {
  ServerConnection::Host host;
  host.locatorRequest = [this] { return units_.requestText; };
  host.dataRequest = [this] { return DataRequest(); };
  host.portBase = [this] { return portBase_.Value(); };
  host.caption = [this](const std::string& text) { view_.SetCaption(text); };
  host.message = [this](const std::string& text) { ports_.questions.Tell(text); };
  host.report = [this](const std::string& code, const std::string& message) { OnFailure(code, message); };
  host.arrived = [this](ByteView bytes) { TakeArrival(bytes); };
  host.closedByServer = [this] { OnConnectionLost("The server has closed the connection."); };
  host.locatorHost = host_.locatorHost;
  host.faqAddress = host_.faqAddress;
  return host;
}

std::string DataFeed::DataRequest() {
  const std::string_view unitIds = std::string_view(units_.requestText).substr(1);
  if (unitIds.empty()) return {};
  UtcSpan window = host_.window();
  window.start = coverage_.Ask(window.start, !isLive_);
  askedUntil_ = window.end;
  return DataRequestText(unitIds, window.start, window.end);
}

void DataFeed::Restart() {
  DropStream();
  if (isLive_) return connection_.Renew();
  connection_.Restart();
}

void DataFeed::RetryNow() {
  DropStream();
  connection_.Retry();
}

// What came over the old connection can't be continued by the new one, and what was reported of it is no
// question any more.
void DataFeed::DropStream() {
  retry_.Hide();
  reconnect_.Stop();
  watch_.Restarted();
  dataPause_->SetEnabled(false);
  newBytes_ = 0;
  isStoreFullTold_ = false;
  batch_ = {};
  stream_.Clear();
  ports_.network.data.SetReading(true);
  host_.restarting();
}

void DataFeed::StopRetrying() {
  retry_.Hide();
  connection_.StopRetrying();
}

void DataFeed::EndSession() {
  retry_.Hide();
  host_.endSession();
}

void DataFeed::Close() {
  retry_.Hide();
  reconnect_.Stop();
  dataPause_->SetEnabled(false);
  lastUpdateTimer_->SetEnabled(false);
  connection_.Close();
}

void DataFeed::Forget() {
  stream_.ClearHold();
  batch_ = {};
  store_.Reset(units_.enabledCount);
  coverage_.Reset(units_.enabledCount);
  endedHold_ = hasLoaded_ = false;
  toldPoints_ = 0;
}

void DataFeed::TakeInHeld() {
  stream_.ClearHold();
  TakeArrival({});
}

void DataFeed::TakeArrival(ByteView bytes) {
  if (bytes.empty() && stream_.IsEmpty()) return;
  stream_.Take(bytes);
  // What is not decoded yet is held to a bound, by holding the sender up.
  const std::size_t waiting = stream_.IsHeld() ? stream_.PendingSize() : newBytes_ += bytes.size();
  if (waiting >= PacketStream::kMaxPending) ports_.network.data.SetReading(false);
  if (stream_.IsHeld()) return;
  watch_.Arrived();
  if (!isLive_ || !hasLoaded_) host_.arrived();
  if (bytes.empty() && stream_.Size() >= kPacketHeaderSize) {
    Decode();
  } else {
    // The rest of what was split on the way gets time to arrive, so that one batch is decoded in one go.
    dataPause_->SetEnabled(true);
  }
}

// While the points are being drawn they stay as they are: the pause is repeated.
void DataFeed::OnPause() {
  if (!host_.isDrawing()) Decode();
}

void DataFeed::Decode() {
  assert(store_.UnitCount() == units_.enabledCount);  // who enumerates the units has the feed forget theirs
  dataPause_->SetEnabled(false);
  host_.beforeDecoding();
  const std::size_t leftOutBefore = batch_.leftOut;
  const std::size_t pointsBefore = store_.PointCount();
  bool hasMoved = false;
  const auto outcome = stream_.Decode([this, &hasMoved](std::string_view unitId, ByteView records) {
    if (Merge(units_.EnabledPositionOf(unitId), records)) hasMoved = true;
  });
  store_.Settle();
  if (hasMoved && (!isLive_ || store_.PointCount() != pointsBefore)) host_.pointsMoved();
  // One line a batch: a stream of nothing else must not fill the trace.
  if (const std::size_t count = batch_.leftOut - leftOutBefore; count > 0)
    ports_.trace.Line(std::to_string(count) + " record(s) without a possible place or date left out");
  newBytes_ = 0;
  ports_.network.data.SetReading(true);
  if (outcome.end == PacketStream::End::kShortTail) dataPause_->SetEnabled(true);
  if (!outcome.message.empty() || outcome.resynchronised) OnBroken(outcome);
  if (EndsBatch(outcome)) FinishBatch();
}

bool DataFeed::EndsBatch(const PacketStream::Outcome& outcome) {
  if (outcome.end == PacketStream::End::kDrained) return true;
  return isLive_ && ++partsOfBatch_ >= kMostPartsOfBatch && !batch_.units.empty();
}

// Points were dropped, nobody knows which.
void DataFeed::OnBroken(const PacketStream::Outcome& outcome) {
  if (outcome.resynchronised)
    ports_.trace.Line("packet with a wrong check code: the stream was dropped up to here");
  if (!isLive_) {
    coverage_.Reset(units_.enabledCount);
    if (!outcome.message.empty()) ports_.questions.Tell(outcome.message);
    return;
  }
  if (!outcome.message.empty()) ports_.trace.Line(outcome.message);
  connection_.HangUp();
  OnConnectionLost("What the server sent was damaged.");
}

// Whether points have another index now, as far as that matters: while nothing is live all that have come are
// new to whoever shows them.
bool DataFeed::Merge(std::size_t k, ByteView records) {
  if (k == 0) return false;
  const DecodedRecords decoded = DecodeRecords(records);
  batch_.leftOut += decoded.leftOut;
  if (decoded.rows.empty()) return false;
  batch_.units.insert(k);
  coverage_.Take(k, decoded.rows, ports_.clock.NowUtc());
  const std::uint32_t earliest = WithoutFlag(decoded.rows.front().time);
  const auto known = batch_.earliest.try_emplace(k, earliest).first;
  known->second = std::min(known->second, earliest);
  const auto points = store_.Track(k).Points();
  const bool isLate = !points.empty() && earliest <= WithoutFlag(points.back().time);
  if (!store_.Gather(k, decoded.rows) && !std::exchange(isStoreFullTold_, true)) {
    ports_.trace.Line("the store is full: what comes now is left out");
  }
  return isLate || !isLive_;
}

void DataFeed::FinishBatch() {
  view_.SetCaption("pallomir: " + std::to_string(store_.PointCount()) + " Data Points");
  MergedBatch batch = std::exchange(batch_, {});
  batch.newest = store_.Newest();
  partsOfBatch_ = 0;
  const bool isFirst = !std::exchange(hasLoaded_, true);
  const bool hasNews = std::exchange(toldPoints_, store_.PointCount()) != store_.PointCount();
  if (isLive_) {
    stream_.ClearHold();
    endedHold_ = true;
    if (!hasNews && !isFirst) return;
    if (hasNews) reconnect_.Reset();
    batch.isLive = !isFirst;
  }
  const Millis now = ports_.clock.NowUtc();
  batch.breaksSilence = now - std::exchange(lastNews_, now) >= kSilence;
  host_.batchMerged(batch);
}

void DataFeed::SetLive(bool on) {
  if (on == isLive_) return;
  isLive_ = on;
  if (!on) {
    // What has half arrived is still decoded, and the hold follows that.
    if (std::exchange(endedHold_, false) && stream_.Size() == 0) stream_.Hold();
    const bool waited = reconnect_.IsWaiting();
    reconnect_.Stop();
    if (waited && connection_.CurrentState() == ServerConnection::State::kReporting)
      retry_.Show(failureCode_, failureMessage_);
    return;
  }
  watch_.Begin();
  if (stream_.IsHeld() && !stream_.IsEmpty()) dataPause_->SetEnabled(true);
  stream_.ClearHold();
  stream_.Take({});
  using State = ServerConnection::State;
  const State state = connection_.CurrentState();
  if (state == State::kIdle || state == State::kReporting || state == State::kClosedByServer) AskAnew();
}

void DataFeed::OnFailure(const std::string& code, const std::string& message) {
  ports_.trace.Line("error " + code + " reported");
  failureCode_ = code;
  failureMessage_ = message;
  if (isLive_) return OnConnectionLost(FirstLine(message));
  retry_.Show(code, message);
}

// Without a unit to ask for nobody misses the connection.
void DataFeed::OnConnectionLost(const std::string& why) {
  if (!isLive_ || units_.enabledCount == 0) return;
  trouble_ = why;
  reconnect_.Wait();
  ports_.trace.Line("live: the connection was lost, asking again in " +
                    std::to_string(reconnect_.SecondsLeft()) + " s");
  ShowLamp();
}

void DataFeed::AskAnew() {
  if (units_.enabledCount == 0) return;
  ports_.trace.Line("live: asking the server anew");
  if (!batch_.units.empty()) FinishBatch();  // as far as it has come
  DropStream();
  connection_.Renew();
}

void DataFeed::Watch() {
  const LiveWatch::Facts facts{connection_.CurrentState(),
                               reconnect_.IsWaiting(),
                               coverage_.HasGap(),
                               ports_.clock.NowUtc(),
                               askedUntil_,
                               host_.window().end};
  const LiveWatch::Advice advice = watch_.Look(facts);
  if (watch_.HasSettled()) reconnect_.Reset();
  switch (advice) {
    case LiveWatch::Advice::kNothing:
      return;
    case LiveWatch::Advice::kAskAnew:
      return AskAnew();
    case LiveWatch::Advice::kGiveUp:
      connection_.HangUp();
      return OnConnectionLost("The server does not answer.");
  }
}

void DataFeed::BeginTelling() { lastUpdateTimer_->SetEnabled(true); }

void DataFeed::ShowLamp() {
  LampFacts facts;
  facts.connection = connection_.CurrentState();
  facts.isAnyUnitEnabled = units_.enabledCount > 0;
  facts.retryIn = reconnect_.SecondsLeft();
  facts.trouble = trouble_;
  facts.waitsForFit = stream_.PendingSize() > 0;
  facts.isNotDrawn = host_.hasUndrawnPoints();
  facts.pointCount = store_.PointCount();
  facts.datedLater = NewestDataAt(store_, ports_.clock.NowUtc()).datedLater;
  facts.note = host_.note();
  view_.ShowLamp(LampFor(facts));
}

void DataFeed::TellAge() {
  if (isLive_ && units_.enabledCount > 0) Watch();
  ShowLamp();
  if (units_.enabledCount == 0) return;
  const Millis now = ports_.clock.NowUtc();
  view_.SetCaption(AgeCaption(NewestDataAt(store_, now), store_.PointCount(), now));
}

}  // namespace pallomir
