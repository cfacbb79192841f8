#pragma once

#include <functional>

#include "alerts/alert_delivery.h"
#include "alerts/alert_signal.h"
#include "alerts/mute.h"
#include "shell/joint.h"

namespace pallomir {

/// The alerts in the program: the signal that follows each batch, where alerts are sent to, for how long they
/// are muted, and which units are stale; joined to the menus, the batches and the windows.
class AlertJoints final : public Joint {
 public:
  explicit AlertJoints(const JoinedRooms& rooms);

  /// Whether something happened in the batch that the zones make an alert. Asked where only those are
  /// signalled.
  std::function<bool()> batchHoldsAlert = [] { return false; };

  void Open() override;
  void Close() override;
  void OnLaidOut() override;
  void OnBatch(const MergedBatch& batch) override;
  /// `batchHoldsAlert` gives true now, of a batch of which it did not.
  void OnFoundLate();

 private:
  void HandleCommands(CommandHandlers& handlers);
  void HandleDelivery(CommandHandlers& handlers);
  void FillUnitMenus();
  void ShowSignal();
  void ShowMute();

  const Ports& ports_;
  AlertView& view_;
  AlertChoices& choices_;
  MenuModel& menus_;
  UnitRegister& units_;
  const DataFeed& feed_;
  AlertSignal signal_;
  AlertDelivery delivery_;
  Mute mute_;
};

}  // namespace pallomir
