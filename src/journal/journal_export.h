#pragma once

#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "journal/journal_store.h"
#include "platform/event_loop.h"
#include "platform/local_clock.h"

namespace pallomir {

/// The first line of a CSV file, and that of an entry; both with their line ends. Times are local, with
/// seconds; places are degrees.
std::string CsvHeading();
std::string CsvLine(const JournalEntry& entry, const LocalClock& clock);

/// Writes the journal into a CSV file, part by part from the event loop. The file is there when all of it is
/// written; until then it has another name, ".part" behind.
class JournalExport {
 public:
  /// The first two outlive this object. `done` gets the sentence for the user.
  JournalExport(JournalStore& store, const LocalClock& clock, EventLoop& loop,
                std::function<void(const std::string&)> done);
  ~JournalExport() { Drop(); }

  /// One that runs is dropped.
  void Start(const JournalFilter& filter, const std::filesystem::path& file);
  void Drop();

 private:
  void WritePart();
  void Finish(bool hasWorked);
  std::filesystem::path PartOf(const std::filesystem::path& file) const { return file.string() + ".part"; }

  JournalStore& store_;
  const LocalClock& clock_;
  std::function<void(const std::string&)> done_;
  JournalFilter filter_;
  std::optional<std::filesystem::path> file_;
  std::ofstream out_;
  std::optional<JournalEntry> last_;
  std::size_t count_ = 0;
  std::unique_ptr<Timer> timer_;
};

}  // namespace pallomir
