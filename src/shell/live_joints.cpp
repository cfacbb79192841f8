#include "shell/live_joints.h"

#include <utility>

#include "map/projection.h"
#include "tracking/coverage.h"
#include "tracking/data_age.h"

namespace pallomir {

LiveJoints::LiveJoints(const JoinedRooms& rooms)
    : rooms_(rooms),
      choice_(rooms.choices.live),
      pace_(
          rooms.ports.loop, [this] { return rooms_.map.IsRebuilding(); }, [this] { Draw(); }) {
  rooms.handlers.Set(Command::kLive, [this](int) { Toggle(); });
}

void LiveJoints::Open() {
  choice_.Read();
  if (IsLive()) Begin();
  Show();
}

void LiveJoints::Close() { pace_.Stop(); }

void LiveJoints::Toggle() {
  choice_.Store(!choice_.Value());
  if (IsLive()) {
    Begin();
  } else {
    rooms_.feed.SetLive(false);
    window_.Forget();
    pace_.Stop();
  }
  Show();
  rooms_.feed.ShowLamp();
}

void LiveJoints::Begin() {
  window_.Take(rooms_.pickers.Window(), rooms_.localClock.Now());
  rooms_.feed.SetLive(true);
}

void LiveJoints::Show() {
  rooms_.menus.At(Command::kLive).checked = IsLive();
  const auto run = [this](Command command) { return [this, command] { rooms_.handlers.Run(command, 0); }; };
  LiveView& view = rooms_.ports.views.live;
  if (!IsLive()) return view.ShowLive("", "", {});
  if (window_.IsFollowing())
    return view.ShowLive("Live", "New points are shown as they come.\nPress L to switch this off.",
                         run(Command::kLive));
  view.ShowLive("Live: paused, press X",
                "The time window does not hold the present.\nPress X to return to the current day.",
                run(Command::kCurrentDay));
}

Millis LiveJoints::WantedUntil() const {
  return window_.WantedUntil(rooms_.pickers.Window(), rooms_.localClock.Now());
}

std::string LiveJoints::LampNote() const {
  if (!IsLive()) return {};
  return window_.IsFollowing() ? "Live: new points are shown as they come" : "Live: paused, press X";
}

void LiveJoints::OnReload() {
  pace_.Stop();
  if (!IsLive()) return;
  window_.Take(rooms_.pickers.Window(), rooms_.localClock.Now());
  Show();
}

void LiveJoints::OnBatch(const MergedBatch& batch) {
  if (!IsLive()) return;
  SlideWindow();
  if (batch.isLive) return GrowTracks(batch);
  box_ = rooms_.points.BoxOfUnit(0);  // the first batch of a load is drawn as any is
}

// A point that is dated far ahead is shown where the window holds it, but takes the window nowhere.
void LiveJoints::SlideWindow() {
  const Millis latest = rooms_.ports.clock.NowUtc() + kMostAhead - kClockTolerance;
  const auto newest = NewestDataAt(rooms_.feed.Points(), latest).utc;
  if (!newest) return;
  if (const auto end = window_.EndFor(rooms_.localClock.ToLocal(*newest))) rooms_.pickers.ExtendTo(*end);
}

void LiveJoints::GrowTracks(const MergedBatch& /*batch*/) { pace_.Want(); }

void LiveJoints::Draw() {
  if (!Follow()) rooms_.map.Rebuild();
}

// On Update. A fit follows when there are points outside of the box that was fitted last: so a view that the
// user chose meanwhile stays until there is a reason. True when the tiles are drawn for that.
bool LiveJoints::Follow() {
  const int onUpdate = rooms_.choices.onUpdate.Value();
  const WorldBox box = rooms_.points.BoxOfUnit(0);
  const bool hasGrown = std::exchange(box_, box) != box;
  const bool isFitted = onUpdate == 1 && hasGrown;
  if (isFitted) rooms_.map.FitToNewData(box);
  const DataPoint* newest = rooms_.feed.Points().Newest();
  if (onUpdate == 2 && newest) rooms_.map.SendPan(WorldYToLat(newest->y), WorldXToLng(newest->x));
  return isFitted;
}

}  // namespace pallomir
