#include "zones/zone_store.h"

#include <utility>

#include "base/damaged_copy.h"
#include "base/whole_file.h"
#include "zones/zone_file.h"

namespace pallomir {
namespace {

constexpr std::size_t kMostSteps = 50;
// Of all lists that are kept for undoing; a corner takes 16 bytes.
constexpr std::size_t kMostKeptVertices = 4'000'000;

}  // namespace

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
  if (read.illegalDepth) return {read.illegalDepth, {}};
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

std::string ZoneStore::Write(const ZoneTree& next) {
  if (!readOnly_.empty()) return readOnly_;
  if (!damaged_.empty()) {
    if (const auto error = KeepDamagedCopy(file_, damaged_))
      return "The damaged zone file could not be copied aside: " + error.message() + ".";
    damaged_.clear();
  }
  const std::string content = WriteZones(next);
  if (content.size() > kMaxZoneFileSize) return "The zones could not be saved: there are too many of them.";
  if (const auto error = ReplaceFile(file_, content))
    return "The zones could not be saved: " + error.message() + ".";
  return {};
}

void ZoneStore::Remember(std::deque<ZoneTree>& history, ZoneTree tree) {
  history.push_back(std::move(tree));
  std::size_t vertices = 0;
  for (const ZoneTree& kept : history) vertices += kept.AllVertices().size();
  while (history.size() > 1 && (history.size() > kMostSteps || vertices > kMostKeptVertices)) {
    vertices -= history.front().AllVertices().size();
    history.pop_front();
  }
}

std::string ZoneStore::Save(ZoneTree next) {
  if (std::string problem = Write(next); !problem.empty()) return problem;
  Remember(undone_, std::exchange(tree_, {}));
  redone_.clear();
  TakeOver(std::move(next));
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
  if (std::string problem = Write(from.back()); !problem.empty()) return problem;
  Remember(to, std::exchange(tree_, {}));
  TakeOver(std::move(from.back()));
  from.pop_back();
  return {};
}

std::string ZoneStore::Undo() { return Step(undone_, redone_); }
std::string ZoneStore::Redo() { return Step(redone_, undone_); }

}  // namespace pallomir
