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

}  // namespace

DataFeed::DataFeed(const FeedPorts& ports, FeedView& view, const UnitBook& units, const Choice<int>& portBase,
                   Host host)
    : ports_(ports),
      view_(view),
      units_(units),
      portBase_(portBase),
      host_(std::move(host)),
      connection_(ports.network, ports.loop, ports.trace, ConnectionHost()),
      retry_(view, ports.loop, [this] { RetryNow(); }) {
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
  host.report = [this](const std::string& code, const std::string& message) {
    ports_.trace.Line("error " + code + " reported");
    retry_.Show(code, message);
  };
  host.arrived = [this](ByteView bytes) { TakeArrival(bytes); };
  host.locatorHost = host_.locatorHost;
  host.faqAddress = host_.faqAddress;
  return host;
}

std::string DataFeed::DataRequest() const {
  const std::string_view unitIds = std::string_view(units_.requestText).substr(1);
  if (unitIds.empty()) return {};
  const UtcSpan window = host_.window();
  return DataRequestText(unitIds, window.start, window.end);
}

void DataFeed::Restart() {
  DropStream();
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
  dataPause_->SetEnabled(false);
  lastUpdateTimer_->SetEnabled(false);
  connection_.Close();
}

void DataFeed::Forget() {
  stream_.ClearHold();
  batch_ = {};
  store_.Reset(units_.enabledCount);
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
  host_.arrived();
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
  bool hasMoved = false;
  const auto outcome = stream_.Decode([this, &hasMoved](std::string_view unitId, ByteView records) {
    if (Merge(units_.EnabledPositionOf(unitId), records)) hasMoved = true;
  });
  store_.Settle();
  if (hasMoved) host_.pointsMoved();
  // One line a batch: a stream of nothing else must not fill the trace.
  if (const std::size_t count = batch_.leftOut - leftOutBefore; count > 0)
    ports_.trace.Line(std::to_string(count) + " record(s) without a possible place or date left out");
  newBytes_ = 0;
  ports_.network.data.SetReading(true);
  if (outcome.end == PacketStream::End::kShortTail) dataPause_->SetEnabled(true);
  if (outcome.end != PacketStream::End::kDrained) return;
  if (!outcome.message.empty()) ports_.questions.Tell(outcome.message);
  if (outcome.resynchronised)
    ports_.trace.Line("packet with a wrong check code: the stream was dropped up to here");
  FinishBatch();
}

// Whether there was something to merge.
bool DataFeed::Merge(std::size_t k, ByteView records) {
  if (k == 0) return false;
  const DecodedRecords decoded = DecodeRecords(records);
  batch_.leftOut += decoded.leftOut;
  if (decoded.rows.empty()) return false;
  batch_.units.insert(k);
  const std::uint32_t earliest = WithoutFlag(decoded.rows.front().time);
  const auto known = batch_.earliest.try_emplace(k, earliest).first;
  known->second = std::min(known->second, earliest);
  if (!store_.Gather(k, decoded.rows) && !std::exchange(isStoreFullTold_, true)) {
    ports_.trace.Line("the store is full: what comes now is left out");
  }
  return true;
}

void DataFeed::FinishBatch() {
  view_.SetCaption("pallomir: " + std::to_string(store_.PointCount()) + " Data Points");
  MergedBatch batch = std::exchange(batch_, {});
  batch.newest = store_.Newest();
  host_.batchMerged(batch);
}

void DataFeed::BeginTelling() { lastUpdateTimer_->SetEnabled(true); }

void DataFeed::ShowLamp() {
  LampFacts facts;
  facts.connection = connection_.CurrentState();
  facts.isAnyUnitEnabled = units_.enabledCount > 0;
  facts.waitsForFit = stream_.PendingSize() > 0;
  facts.isNotDrawn = host_.hasUndrawnPoints();
  facts.pointCount = store_.PointCount();
  facts.datedLater = NewestDataAt(store_, ports_.clock.NowUtc()).datedLater;
  facts.note = host_.note();
  view_.ShowLamp(LampFor(facts));
}

void DataFeed::TellAge() {
  ShowLamp();
  if (units_.enabledCount == 0) return;
  const Millis now = ports_.clock.NowUtc();
  view_.SetCaption(AgeCaption(NewestDataAt(store_, now), store_.PointCount(), now));
}

}  // namespace pallomir
