#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "journal/journal_list.h"

namespace pallomir {

/// The windows of this room.
class JournalView {
 public:
  virtual ~JournalView() = default;

  /// What is done in the journal's window.
  struct Actions {
    std::function<void(const JournalEntry&)> show;  ///< its place
    std::function<void(std::vector<std::int64_t> ids)> acknowledge;
    std::function<void()> acknowledgeAll;  ///< that the filter lets through
    std::function<void()> save;            ///< the same, as CSV
    std::function<void(bool on)> notify;   ///< by the desktop, of alerts
    std::function<void(const std::string& place)> moved;
  };
  struct Choices {
    std::string place;  ///< as `moved` told it last; may be anything
    bool notifies = true;
  };
  /// `formJournal`, modeless; one that is open comes forward. The list outlives it.
  virtual void ShowJournal(JournalList& list, const Choices& choices, Actions actions) = 0;
  /// The list is another one now.
  virtual void RefreshJournal() = 0;
  /// A line in the window, if it is open.
  virtual void ShowJournalNote(const std::string& text) = 0;
  /// The file that the user chose; there is no answer when none was.
  virtual void AskCsvFile(std::function<void(const std::filesystem::path&)> then) = 0;
  /// In the caption line, whose button does `chosen`.
  virtual void ShowOpenAlerts(std::size_t count, std::function<void()> chosen) = 0;
  /// Takes all windows away.
  virtual void CloseJournal() = 0;
};

}  // namespace pallomir
