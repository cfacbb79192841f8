#pragma once

#include <cstddef>
#include <deque>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "zones/zone_query.h"
#include "zones/zone_tree.h"

namespace pallomir {

/// A list of zones on its way into the file: first it is written beside the file, on any thread, then the
/// store takes it over. One that never gets there leaves nothing behind.
class PendingZones {
 public:
  ~PendingZones();
  PendingZones(const PendingZones&) = delete;
  PendingZones& operator=(const PendingZones&) = delete;

  void Write();
  /// Makes the zones ready for the query, which else their first query does.
  void Project() { projected_.emplace(next_); }

 private:
  friend class ZoneStore;
  PendingZones(std::filesystem::path file, const std::string& suffix, ZoneTree next);

  std::filesystem::path file_;
  std::filesystem::path beside_;
  ZoneTree next_;
  std::string damaged_;  // content of the file that is to be kept aside
  std::string problem_;  // why the file can't hold the list
  bool isBeside_ = false;
  std::optional<ProjectedZoneTree> projected_;
};

/// The zones in use and the file that holds them. The file is read whole by `Load` and replaced whole by
/// every change, so that on disk there is always either the old list or the new one.
class ZoneStore {
 public:
  explicit ZoneStore(std::filesystem::path file);

  struct Loaded {
    /// The file nests deeper than its zones allow; the tree is the one of before. The program can't go on.
    std::optional<int> illegalDepth;
    /// What the user must know, a sentence or two; empty when all is well, or known already.
    std::string message;
  };
  /// Reads the file. One that is missing is made, with no zones.
  Loaded Load();

  const ZoneTree& Tree() const { return tree_; }
  /// The same zones for the query; projected when it is first asked for.
  const ProjectedZoneTree& Projected();

  /// Why no change can be stored, as a sentence; empty when it can.
  const std::string& WhyReadOnly() const { return readOnly_; }

  // Changes. Each is on disk when it returns. What could not be stored is not done: the sentence for the user
  // is returned, empty on success.
  std::string Save(ZoneTree next);
  /// The same in two steps, with `PendingZones::Write` between them. `suffix` tells the file beside from
  /// those of other changes meanwhile.
  std::unique_ptr<PendingZones> Begin(ZoneTree next, const std::string& suffix) const;
  std::string Commit(PendingZones& pending);
  /// Back to an empty list of the kind "Alerted". The file of before is kept beside it, "<name>.deleted".
  std::string DeleteAll();
  std::string Undo();
  std::string Redo();
  bool CanUndo() const { return !undone_.empty(); }
  bool CanRedo() const { return !redone_.empty(); }

 private:
  std::string MoveIn(PendingZones& pending);
  void TakeOver(ZoneTree next);
  void Remember(std::deque<ZoneTree>& history, ZoneTree tree);
  std::string Step(std::deque<ZoneTree>& from, std::deque<ZoneTree>& to);
  Loaded Unreadable(const std::string& why);

  std::filesystem::path file_;
  ZoneTree tree_;
  std::optional<ProjectedZoneTree> projected_;
  std::string damaged_;  // content that was only read in part and is not kept aside yet
  std::string readOnly_;
  std::string lastMessage_;
  std::deque<ZoneTree> undone_;  // the lists before each change of this run, the last one behind
  std::deque<ZoneTree> redone_;
};

}  // namespace pallomir
