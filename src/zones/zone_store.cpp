#include "zones/zone_store.h"

#include <utility>

#include "base/damaged_copy.h"
#include "base/whole_file.h"
#include "zones/zone_file.h"

namespace pallomir {
namespace {

// Of all lists that are kept for undoing, in bytes: every step of a run, unless the lists are huge.
constexpr std::size_t kMostKept = 64 << 20;

std::size_t KeptSize(const ZoneTree& tree) {
  constexpr std::size_t kZone = 256;  // its record and texts, about
  return kZone + tree.Count() * kZone + tree.AllVertices().size() * sizeof(ZoneVertex);
}

constexpr char kSuffix[] = ".new";

std::string NotSaved(const std::error_code& error) {
  return "The zones could not be saved: " + error.message() + ".";
}

}  // namespace

PendingZones::PendingZones(std::filesystem::path file, const std::string& suffix, ZoneTree next)
    : file_(std::move(file)), beside_(file_), next_(std::move(next)) {
  beside_ += suffix;
}

PendingZones::~PendingZones() {
  std::error_code error;
  if (isBeside_) std::filesystem::remove(beside_, error);
}

void PendingZones::Write() {
  if (!problem_.empty()) return;
  const std::string content = WriteZones(next_);
  if (content.size() > kMaxZoneFileSize) {
    problem_ = "The zones could not be saved: there are too many of them.";
  } else if (const auto failed = damaged_.empty() ? std::error_code() : KeepDamagedCopy(file_, damaged_)) {
    problem_ = "The damaged zone file could not be copied aside: " + failed.message() + ".";
  } else if (const auto error = WriteDurably(beside_, content)) {
    problem_ = NotSaved(error);
  } else {
    isBeside_ = true;
  }
}

ZoneStore::ZoneStore(std::filesystem::path file) : file_(std::move(file)) {}

ZoneStore::Loaded ZoneStore::Load() {
  std::error_code error;
  const auto content = ReadWholeFile(file_, kMaxZoneFileSize, error);
  readOnly_.clear();
  damaged_.clear();
  if (!content && error == std::errc::no_such_file_or_directory) {
    TakeOver({});
    if (const auto failed = ReplaceFile(file_, WriteZones({}))) return Unreadable(failed.message());
    return {};
  }
  if (!content) {
    TakeOver({});
    return Unreadable(error.message());
  }
  ZoneFileContent read = ReadZones(*content);
  if (read.illegalDepth) {
    readOnly_ = "The zones can't be changed: the file " + file_.string() + " nests them against its rule.";
    return {read.illegalDepth, {}};
  }
  TakeOver(std::move(read.tree));
  if (!read.damage) {
    lastMessage_.clear();
    return {};
  }
  damaged_ = *content;
  std::string message = "The zone file is damaged: line " + std::to_string(read.damage->line) + " " +
                        read.damage->what +
                        ".\nThe zones before that line are shown. The file is copied "
                        "aside before it is changed.";
  if (message == lastMessage_) return {};
  lastMessage_ = message;
  return {{}, message};
}

ZoneStore::Loaded ZoneStore::Unreadable(const std::string& why) {
  readOnly_ = "The zones can't be changed: the file " + file_.string() + " can't be used (" + why + ").";
  if (readOnly_ == lastMessage_) return {};
  lastMessage_ = readOnly_;
  return {{}, readOnly_};
}

const ProjectedZoneTree& ZoneStore::Projected() {
  if (!projected_) projected_.emplace(tree_);
  return *projected_;
}

void ZoneStore::TakeOver(ZoneTree next) {
  tree_ = std::move(next);
  projected_.reset();
}

std::unique_ptr<PendingZones> ZoneStore::Begin(ZoneTree next, const std::string& suffix) const {
  std::unique_ptr<PendingZones> pending(new PendingZones(file_, suffix, std::move(next)));
  pending->damaged_ = damaged_;
  pending->problem_ = readOnly_;
  return pending;
}

std::string ZoneStore::MoveIn(PendingZones& pending) {
  if (!pending.problem_.empty()) return pending.problem_;
  damaged_.clear();
  pending.isBeside_ = false;
  if (const auto error = MoveOver(pending.beside_, file_)) return NotSaved(error);
  return {};
}

void ZoneStore::Remember(std::deque<ZoneTree>& history, ZoneTree tree) {
  history.push_back(std::move(tree));
  std::size_t size = 0;
  for (const ZoneTree& kept : history) size += KeptSize(kept);
  while (history.size() > 1 && size > kMostKept) {
    size -= KeptSize(history.front());
    history.pop_front();
  }
}

std::string ZoneStore::Save(ZoneTree next) {
  const auto pending = Begin(std::move(next), kSuffix);
  pending->Write();
  return Commit(*pending);
}

std::string ZoneStore::Commit(PendingZones& pending) {
  if (std::string problem = MoveIn(pending); !problem.empty()) return problem;
  Remember(undone_, std::exchange(tree_, {}));
  redone_.clear();
  TakeOver(std::move(pending.next_));
  projected_ = std::move(pending.projected_);
  return {};
}

std::string ZoneStore::DeleteAll() {
  std::filesystem::path before = file_;
  before += ".deleted";
  if (!tree_.IsEmpty() && readOnly_.empty()) {
    if (const auto error = ReplaceFile(before, WriteZones(tree_)))
      return "The zones could not be kept aside: " + error.message() + ".";
  }
  return Save({});
}

std::string ZoneStore::Step(std::deque<ZoneTree>& from, std::deque<ZoneTree>& to) {
  if (from.empty()) return {};
  const auto pending = Begin(from.back(), kSuffix);
  pending->Write();
  if (std::string problem = MoveIn(*pending); !problem.empty()) return problem;
  Remember(to, std::exchange(tree_, {}));
  TakeOver(std::move(pending->next_));
  from.pop_back();
  return {};
}

std::string ZoneStore::Undo() { return Step(undone_, redone_); }
std::string ZoneStore::Redo() { return Step(redone_, undone_); }

}  // namespace pallomir
