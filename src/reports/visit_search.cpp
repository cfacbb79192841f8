#include "reports/visit_search.h"

#include <sys/stat.h>

#include <algorithm>
#include <cassert>

namespace pallomir {
namespace {

namespace fs = std::filesystem;

// Of no records, or of few: opening them takes its time too.
constexpr int kFilesPerStep = 64;

std::vector<Visit> Merged(const std::vector<Visit>& listed, const std::vector<Visit>& more,
                          std::size_t limit) {
  std::vector<Visit> all;
  all.reserve(listed.size() + more.size());
  std::ranges::merge(listed, more, std::back_inserter(all), std::ranges::greater{}, &Visit::exit,
                     &Visit::exit);
  if (all.size() > limit) all.resize(limit);
  return all;
}

}  // namespace

VisitSearch::VisitSearch(fs::path dataFolder, VisitQuery query)
    : folder_(std::move(dataFolder)), query_(std::move(query)) {
  assert(query_.limit > 0);
  std::error_code error;
  if (!fs::is_directory(folder_, error)) Stop("There is no data folder " + folder_.string());
}

bool VisitSearch::Step() {
  if (isOver_) return false;
  if (units_.size() < query_.unitIds.size()) {
    ListNextUnit();
    return !isOver_;
  }
  const std::uint64_t blockEnd = records_ + kRecordsPerBlock;
  for (int files = 0; files < kFilesPerStep && records_ < blockEnd && !isOver_; ++files) {
    if (unit_ == units_.size()) {
      isOver_ = true;
    } else if (!scan_) {
      BeginUnit();
    } else if (filesLeft_ == 0) {
      EndUnit();
    } else {
      ReadNextFile();
    }
  }
  return !isOver_;
}

void VisitSearch::ListNextUnit() {
  UnitFiles& files = units_.emplace_back(folder_ / query_.unitIds[units_.size()]);
  if (const std::error_code error = files.List()) Stop(FolderNotListed(error.value()));
}

void VisitSearch::BeginUnit() {
  if (const std::error_code error = units_[unit_].Open()) return Stop(FolderNotListed(error.value()));
  filesLeft_ = FileCountOf(unit_);
  summaries_ = ReadSummaries(folder_, query_.unitIds[unit_]);
  scan_.emplace(unit_, query_.area, query_.span, [this](std::uint32_t exit) { return CanStillList(exit); });
}

void VisitSearch::CloseUnit() {
  scan_->Finish();
  listed_ = Merged(listed_, scan_->Visits(), query_.limit);
  scan_.reset();
  summaries_.clear();
  units_[unit_].Close();
}

void VisitSearch::EndUnit() {
  CloseUnit();
  ++unit_;
  isAnew_ = false;
}

// Once in a unit: an import that exchanges its folder takes no longer than the search.
void VisitSearch::StartAnew() {
  scan_.reset();
  isAnew_ = true;
  if (const std::error_code error = units_[unit_].List()) Stop(FolderNotListed(error.value()));
}

void VisitSearch::ReadNextFile() {
  if (PassOverNextFile()) return;
  using Outcome = DataFileReader::Outcome;
  const UnitFiles& files = units_[unit_];
  const Outcome outcome = reader_.Read(files.Descriptor(), files.Names()[filesLeft_ - 1].c_str());
  if (outcome == Outcome::kRead) {
    TakeFile();
  } else if (outcome == Outcome::kGone && !isAnew_) {
    StartAnew();
  } else if (outcome == Outcome::kNoFile) {
    --filesLeft_;
  } else {
    Stop(FileNotRead(outcome, reader_, Place()));
  }
}

// Whether it was dealt with by its summary alone.
bool VisitSearch::PassOverNextFile() {
  const std::string& name = units_[unit_].Names()[filesLeft_ - 1];
  const auto known = summaries_.find(name);
  if (known == summaries_.end()) return false;
  const FileSummary& summary = known->second;
  struct stat status {};
  if (::fstatat(units_[unit_].Descriptor(), name.c_str(), &status, 0) != 0 ||
      StampOf(status) != summary.stamp)
    return false;
  if (!IsWanted(summary.last)) {
    EndUnit();
    return true;
  }
  if (!scan_->PassOver(summary)) return false;
  records_ += summary.RecordCount();
  --filesLeft_;
  return true;
}

void VisitSearch::TakeFile() {
  const ByteView file = reader_.Content();
  if (!file.empty() && !IsWanted(FileRecordTime(file, file.size() - kRecordSize))) return EndUnit();
  const UnitScan::Examined examined = scan_->Examine(file);
  records_ += examined.records;
  switch (examined.outcome) {
    case UnitScan::Outcome::kGoesOn:
      --filesLeft_;
      break;
    case UnitScan::Outcome::kHasAll:
      EndUnit();
      break;
    case UnitScan::Outcome::kOutOfOrder:
      Stop(RecordsOutOfOrder(examined, records_, file.size(), Place()));
      break;
  }
}

// Whether a file whose newest record has this time can add something.
bool VisitSearch::IsWanted(std::uint32_t newest) const {
  return scan_->HasOpenVisit() || CanStillList(newest);
}

// Whether another visit of the unit at work, one that ends then, would be among those listed.
bool VisitSearch::CanStillList(std::uint32_t exit) const {
  const auto older = std::ranges::upper_bound(listed_, exit, std::ranges::greater{}, &Visit::exit);
  const auto before = static_cast<std::size_t>(older - listed_.begin());
  return before + scan_->Visits().size() < query_.limit;
}

void VisitSearch::Stop(std::string problem) {
  problem_ = std::move(problem);
  isOver_ = true;
  if (scan_) CloseUnit();
}

SearchPlace VisitSearch::Place() const {
  return {unit_ + 1, filesLeft_, FileCountOf(unit_), units_[unit_].Names()[filesLeft_ - 1]};
}

VisitSearch::Progress VisitSearch::State() const {
  Progress progress{records_, 0, 0, unit_, 0};
  for (std::size_t unit = 0; unit < units_.size(); ++unit) {
    progress.fileCount += FileCountOf(unit);
    if (unit < unit_) progress.files += FileCountOf(unit);
  }
  if (scan_) progress.files += FileCountOf(unit_) - filesLeft_;
  const bool isListed = units_.size() == query_.unitIds.size();
  if (isOver_ && problem_.empty())
    progress.percent = 100;
  else if (isListed && progress.fileCount > 0)
    progress.percent = static_cast<int>(progress.files * 100 / progress.fileCount);
  return progress;
}

std::vector<Visit> VisitSearch::Visits() const {
  return scan_ ? Merged(listed_, scan_->Visits(), query_.limit) : listed_;
}

}  // namespace pallomir
