#pragma once

#include <cstddef>
#include <deque>
#include <filesystem>
#include <optional>
#include <string>

#include "zones/zone_query.h"
#include "zones/zone_tree.h"

namespace pallomir {

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
  /// Back to an empty list of the kind "Alerted". The file of before is kept beside it, "<name>.deleted".
  std::string DeleteAll();
  std::string Undo();
  std::string Redo();
  bool CanUndo() const { return !undone_.empty(); }
  bool CanRedo() const { return !redone_.empty(); }

 private:
  std::string Write(const ZoneTree& next);
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
