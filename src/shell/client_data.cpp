#include <algorithm>
#include <string>

#include "map/projection.h"
#include "shell/client.h"

// What the data feed asks of the rest of the program, and what follows a batch.

namespace pallomir {

DataFeed::Host Client::FeedHost() {
  DataFeed::Host host;
  host.window = [this] {
    // West of Greenwich the last hours of local time lie in a year that no date can name.
    const auto utc = [this](Millis local) { return std::min(localClock_.ToUtc(local), LastMoment()); };
    return DataFeed::UtcSpan{utc(pickers_.Window().start), utc(live_.WantedUntil())};
  };
  host.isDrawing = [this] { return map_.IsRebuilding(); };
  host.hasUndrawnPoints = [this] { return map_.HasUndrawnPoints(); };
  host.note = [this] {
    const std::string live = live_.LampNote();
    const std::string& service = options_.ServiceNote();
    return live.empty() || service.empty() ? live + service : live + "\n" + service;
  };
  host.restarting = [this] { map_.OpenIfLost(); };
  host.arrived = [this] { marks_.HidePointMarker(); };
  host.beforeDecoding = [this] {
    map_.DropRebuild();
    live_.IsLive() ? pointTables_.Tables().OnPointsGrow() : pointTables_.Tables().OnPointsMove();
  };
  host.pointsMoved = [this] {
    timeline_.PointsMoved();
    pointTables_.Tables().OnPointsMove();
  };
  host.batchMerged = [this](const MergedBatch& batch) { OnBatch(batch); };
  host.endSession = [this] { ports_.desktop.window.Close(); };
  host.locatorHost = ports_.deployment.websiteServer;
  host.faqAddress = ports_.deployment.FaqAddress();
  return host;
}

void Client::OnBatch(const MergedBatch& batch) {
  if (!batch.isLive) ports_.desktop.window.BringToForeground();
  if (batch.newest) {
    view_.LatestLat = WorldYToLat(batch.newest->y);
    view_.LatestLng = WorldXToLng(batch.newest->x);
  }
  for (Joint* joint : joints_) joint->OnBatch(batch);
  if (!batch.isLive) OnUpdateAction();
  timeline_.DataCame();
}

void Client::OnUpdateAction() {
  if (choices_.onUpdate.Value() == 1 || !map_.MayFit()) {
    map_.FitToNewData(BeginFit(0));
    return;
  }
  if (feed_.Points().PointCount() > 0) map_.NotePoints();
  if (choices_.onUpdate.Value() == 2) {
    map_.SendPan(view_.LatestLat, view_.LatestLng);
  }
}

void Client::FitByUser(std::size_t k) {
  feed_.TakeInHeld();
  map_.FitToData(BeginFit(k));
  timeline_.Timeline_Resize();  // the redraw takes the notice away, also where there was nothing new
}

}  // namespace pallomir
