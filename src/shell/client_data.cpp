#include <string>
#include <utility>

#include "map/projection.h"
#include "shell/client.h"
#include "tracking/connection_lamp.h"
#include "tracking/data_age.h"

// The road of the data: from the connection through the packets into the store, and what follows a batch.

namespace pallomir {

ServerConnection::Host Client::ConnectionHost() {
  ServerConnection::Host host;
  host.locatorRequest = [this] { return book_.requestText; };
  host.dataRequest = [this] { return DataRequest(); };
  host.portBase = [this] { return choices_.portBase.Value(); };
  host.isClosing = [this] { return closing_; };
  host.caption = [this](const std::string& text) { ports_.view.SetCaption(text); };
  host.message = [this](const std::string& text) { ports_.questions.Tell(text); };
  host.report = [this](const std::string& code, const std::string& message) { ReportError(code, message); };
  host.arrived = [this](ByteView bytes) { ProcessData(bytes); };
  host.locatorHost = ports_.deployment.websiteServer;
  host.faqAddress = FaqAddress();
  return host;
}

std::string Client::DataRequest() const {
  const std::string_view unitIds = std::string_view(book_.requestText).substr(1);
  if (unitIds.empty()) return {};
  return DataRequestText(unitIds, ToUtc(window_.start, utcOffsetMinutes_),
                         ToUtc(window_.end, utcOffsetMinutes_));
}

void Client::RestartConnection() {
  PrepareRestart();
  connection_->Restart();
}

// What came over the old connection can't be continued by the new one, and what was reported of it is no
// question any more.
void Client::PrepareRestart() {
  CloseRetry();
  dataPause_->SetEnabled(false);
  newBytes_ = 0;
  storeFullTold_ = false;
  stream_.Clear();
  ports_.wsClientC.SetReading(true);
  map_->OpenIfLost();
}

void Client::ReportError(const std::string& code, const std::string& message) {
  ++errorCount_;
  ports_.trace.Line("error " + code + " reported");
  countdown_.Start();
  ports_.view.ShowRetry(RetryMessage(code, errorCount_, message));
  ports_.view.SetRetryProgress(countdown_.Bar(), countdown_.Label());
  tmrPB_->SetEnabled(true);
}

void Client::OnRetryTick() {
  const bool wasLast = countdown_.Tick();
  ports_.view.SetRetryProgress(countdown_.Bar(), countdown_.Label());
  if (wasLast) RetryNow();
}

void Client::CloseRetry() {
  tmrPB_->SetEnabled(false);
  ports_.view.HideRetry();
}

void Client::RetryNow() {
  PrepareRestart();
  connection_->Retry();
}

void Client::StopRetrying() {
  CloseRetry();
  connection_->StopRetrying();
}

void Client::EndSession() {
  CloseRetry();
  ports_.window.Close();
}

void Client::ProcessData(ByteView newText) {
  if (closing_ || (newText.empty() && stream_.IsEmpty())) return;
  stream_.Take(newText);
  // What is not decoded yet is held to a bound, by holding the sender up.
  const std::size_t waiting = stream_.IsHeld() ? stream_.PendingSize() : newBytes_ += newText.size();
  if (waiting >= PacketStream::kMaxPending) ports_.wsClientC.SetReading(false);
  if (stream_.IsHeld()) return;
  HidePointMarker();
  if (newText.empty() && stream_.Size() >= kPacketHeaderSize) {
    DecodeBuffer();
  } else {
    // The rest of what was split on the way gets time to arrive, so that one batch is decoded in one go.
    dataPause_->SetEnabled(true);
  }
}

// While the points are being drawn they stay as they are: the pause is repeated.
void Client::OnDataPause() {
  if (!map_->IsRebuilding()) DecodeBuffer();
}

void Client::DecodeBuffer() {
  dataPause_->SetEnabled(false);
  map_->DropRebuild();  // it would read points that move; only before a fit, which begins another
  const auto outcome =
      stream_.Decode([this](std::string_view unitId, ByteView records) { MergePacket(unitId, records); });
  store_.Settle();
  // One line a batch: a stream of nothing else must not fill the trace.
  if (const std::size_t count = std::exchange(leftOutRecords_, 0); count > 0)
    ports_.trace.Line(std::to_string(count) + " record(s) without a possible place or date left out");
  newBytes_ = 0;
  ports_.wsClientC.SetReading(true);
  if (outcome.end == PacketStream::End::kShortTail) dataPause_->SetEnabled(true);
  if (outcome.end != PacketStream::End::kDrained) return;
  if (!outcome.message.empty()) ports_.questions.Tell(outcome.message);
  if (outcome.resynchronised)
    ports_.trace.Line("packet with a wrong check code: the stream was dropped up to here");
  FinishBatch();
}

void Client::MergePacket(std::string_view unitId, ByteView records) {
  const std::size_t k = book_.EnabledPositionOf(unitId);
  if (k == 0) return;
  const DecodedRecords decoded = DecodeRecords(records);
  leftOutRecords_ += decoded.leftOut;
  picture_.rows.clear();  // its columns name points by their places, which may shift
  if (!store_.Gather(k, decoded.rows, view_.DataBox) && !std::exchange(storeFullTold_, true)) {
    ports_.trace.Line("the store is full: what comes now is left out");
  }
}

void Client::FinishBatch() {
  ports_.view.SetCaption("pallomir: " + std::to_string(store_.PointCount()) + " Data Points");
  ports_.window.BringToForeground();
  Run(seams.startAlert);
  if (const DataPoint* newest = store_.Newest()) {
    view_.LatestLat = WorldYToLat(newest->y);
    view_.LatestLng = WorldXToLng(newest->x);
  }
  OnUpdateAction();
  if (ports_.view.IsTimelineVisible()) {
    ports_.trace.Line("DataProcess is calling for redraw");
    tmrRedraw_->SetEnabled(true);
  } else {
    HideMapUpdating();
  }
}

void Client::OnUpdateAction() {
  if (choices_.onUpdate.Value() == 1 || !map_->MayFit()) {
    map_->AllowFits();
    FitToData(0);
    return;
  }
  if (store_.PointCount() > 0) map_->NotePoints();
  if (choices_.onUpdate.Value() == 2) {
    map_->SendPan(view_.LatestLat, view_.LatestLng);
  }
}

void Client::FitByUser(std::size_t k) {
  stream_.ClearHold();
  ProcessData({});
  FitToData(k);
  Timeline_Resize();  // the redraw takes the notice away, also where there was nothing new
}

void Client::UpdateLamp() {
  LampFacts facts;
  facts.connection = connection_->CurrentState();
  facts.isAnyUnitEnabled = book_.enabledCount > 0;
  facts.waitsForFit = stream_.PendingSize() > 0;
  facts.isNotDrawn = map_->HasUndrawnPoints();
  facts.pointCount = store_.PointCount();
  facts.datedLater = NewestDataAt(store_, ports_.clock.NowUtc()).datedLater;
  facts.note = service_.Note();
  ports_.view.ShowLamp(LampFor(facts));
}

void Client::UpdateCaption() {
  UpdateLamp();
  if (book_.enabledCount == 0) return;
  const Millis now = ports_.clock.NowUtc();
  ports_.view.SetCaption(AgeCaption(NewestDataAt(store_, now), store_.PointCount(), now));
}

}  // namespace pallomir
