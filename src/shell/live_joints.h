#pragma once

#include <string>

#include "live/live_pace.h"
#include "live/live_view.h"
#include "live/live_window.h"
#include "map/map_view.h"
#include "shell/joint.h"

namespace pallomir {

/// Live mode in the program: points are taken in as they come, and map and time window follow them.
class LiveJoints final : public Joint {
 public:
  explicit LiveJoints(const JoinedRooms& rooms);

  bool IsLive() const { return choice_.Value(); }
  /// The end of the points that are wanted, local.
  Millis WantedUntil() const;
  /// For the lamp's tool tip; empty while nothing is live.
  std::string LampNote() const;

  void Open() override;
  void Close() override;
  void OnReload() override;
  void OnBatch(const MergedBatch& batch) override;

 private:
  void Toggle();
  void Begin();
  void Show();
  void SlideWindow();
  void GrowTracks(const MergedBatch& batch);
  void Draw();
  bool Follow();

  JoinedRooms rooms_;
  Choice<bool>& choice_;
  LiveWindow window_;
  LivePace pace_;
  WorldBox box_;  // of all points, when they were drawn last
};

}  // namespace pallomir
