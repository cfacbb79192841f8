#include "journal/journal_export.h"

#include <utility>

#include "base/number_format.h"
#include "map/projection.h"

namespace pallomir {
namespace {

constexpr std::size_t kRowsInPart = 1000;

std::string Quoted(const std::string& text) {
  std::string quoted = "\"";
  for (const char c : text) quoted += c == '"' ? "\"\"" : std::string(1, c);
  return quoted + '"';
}

}  // namespace

std::string CsvHeading() {
  return "Time,Unit ID,Unit,Event,Zone,Alert,Late,Stay (s),Acknowledged,Latitude,Longitude\r\n";
}

std::string CsvLine(const JournalEntry& entry, const LocalClock& clock) {
  const auto time = [&](Millis utc) { return IsoText(clock.ToLocal(utc)); };
  const auto degrees = [](double value) { return FormatFixed(value, 1, 6); };
  return time(entry.utc) + ',' + Quoted(entry.unitId) + ',' + Quoted(entry.unitName) + ',' +
         (entry.hasEntered ? "Entered" : "Left") + ',' + Quoted(entry.zone) + ',' +
         (entry.isAlert ? "Yes" : "No") + ',' + (entry.isLate ? "Yes" : "No") + ',' +
         (entry.stay ? std::to_string(*entry.stay / kSecond) : "") + ',' +
         (entry.acknowledged ? time(*entry.acknowledged) : "") + ',' + degrees(WorldYToLat(entry.place.y)) +
         ',' + degrees(WorldXToLng(entry.place.x)) + "\r\n";
}

JournalExport::JournalExport(JournalStore& store, const LocalClock& clock, EventLoop& loop,
                             std::function<void(const std::string&)> done)
    : store_(store),
      clock_(clock),
      done_(std::move(done)),
      timer_(loop.CreateTimer("JournalExport", 1, [this] { WritePart(); })) {}

void JournalExport::Start(const JournalFilter& filter, const std::filesystem::path& file) {
  Drop();
  filter_ = filter;
  file_ = file;
  last_.reset();
  count_ = 0;
  out_ = std::ofstream(PartOf(file), std::ios::binary | std::ios::trunc);
  out_ << CsvHeading();
  timer_->SetEnabled(true);
}

void JournalExport::Drop() {
  if (!file_) return;
  timer_->SetEnabled(false);
  out_.close();
  std::error_code ignored;
  std::filesystem::remove(PartOf(*file_), ignored);
  file_.reset();
}

void JournalExport::WritePart() {
  const auto rows = store_.RowsBehind(filter_, last_ ? &*last_ : nullptr, kRowsInPart);
  if (!rows) return Finish(false);
  for (const JournalEntry& entry : *rows) out_ << CsvLine(entry, clock_);
  count_ += rows->size();
  if (!rows->empty()) last_ = rows->back();
  if (!out_ || rows->size() < kRowsInPart) Finish(out_.flush().good());
}

void JournalExport::Finish(bool hasWorked) {
  timer_->SetEnabled(false);
  out_.close();
  std::error_code error;
  if (hasWorked) {
    std::filesystem::rename(PartOf(*file_), *file_, error);
  } else {
    error = std::make_error_code(std::errc::io_error);
  }
  const std::string name = file_->string();
  Drop();
  done_(error ? "The journal could not be saved as " + name + ": " + error.message()
              : std::to_string(count_) + (count_ == 1 ? " entry" : " entries") + " saved as " + name);
}

}  // namespace pallomir
