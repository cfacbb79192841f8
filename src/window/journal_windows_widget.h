#pragma once

#include <QPointer>

#include "journal/journal_view.h"

class QFileDialog;

namespace pallomir {

class StateButton;
class formJournal;
class formMain;

/// What is seen of the journal: its window, and a bell in the caption line.
class JournalWindows : public JournalView {
 public:
  /// Puts the bell into the caption line. `window` outlives this object.
  explicit JournalWindows(formMain& window);

  void ShowJournal(JournalList& list, const Choices& choices, Actions actions) override;
  void RefreshJournal() override;
  void ShowJournalNote(const std::string& text) override;
  void AskCsvFile(std::function<void(const std::filesystem::path&)> then) override;
  void ShowOpenAlerts(std::size_t count, std::function<void()> chosen) override;
  void CloseJournal() override;

 private:
  formMain& window_;
  QPointer<StateButton> bell_;  // the window's
  QPointer<formJournal> formJournal_;
  QPointer<QFileDialog> fileDialog_;
};

}  // namespace pallomir
