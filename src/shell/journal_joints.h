#pragma once

#include <functional>
#include <memory>

#include "journal/alert_notices.h"
#include "journal/journal.h"
#include "journal/journal_export.h"
#include "journal/journal_list.h"
#include "journal/journal_view.h"
#include "journal/sqlite_journal.h"
#include "shell/joint.h"
#include "shell/zone_joints.h"

namespace pallomir {

/// The journal in the program: its room and its file, joined to the zones, the batches, the map, the timeline
/// and the windows.
class JournalJoints final : public Joint {
 public:
  JournalJoints(const JoinedRooms& rooms, ZoneJoints& zones);

  /// The last batch held such an event after all: it was found after `OnBatch`.
  std::function<void()> foundLate = [] {};

  /// Opens the file, the user's own or the demo's.
  void Open() override;
  void Close() override;
  void OnReload() override;
  void OnBatch(const MergedBatch& batch) override;

  /// Whether the last batch held an event that is an alert by zones and hours.
  bool HasBatchAlert() const { return journal_ && journal_->HasBatchAlert(); }

 private:
  void TakeZones();
  void Show();
  void ShowPlace(const JournalEntry& entry);
  void OnChanged();
  void Save();
  void SaveAs(const std::filesystem::path& file);
  void Alert(const JournalEntry& entry);

  JoinedRooms rooms_;
  const Ports& ports_;
  JournalView& view_;
  JournalChoices& choices_;
  ZoneJoints& zones_;
  SqliteJournal store_;
  JournalList list_;
  JournalExport export_;
  AlertNotices notices_;
  ZoneTree seenZones_;
  // From Open on.
  std::unique_ptr<Journal> journal_;
};

}  // namespace pallomir
