#include "window/journal_windows_widget.h"

#include <QFileDialog>
#include <utility>

#include "journal/formJournal.h"
#include "ui/file_dialog_widget.h"
#include "window/formMain.h"
#include "window/state_button_widget.h"

namespace pallomir {

JournalWindows::JournalWindows(formMain& window)
    : window_(window), bell_(new StateButton(&window, "Bell", "bell", "Unseen alerts")) {
  window_.AddState(bell_);
  bell_->hide();
}

void JournalWindows::ShowJournal(JournalList& list, const Choices& choices, Actions actions) {
  if (!formJournal_) {
    formJournal_ = new formJournal(&window_, list, choices, std::move(actions));
    formJournal_->show();
  }
  formJournal_->raise();
  formJournal_->activateWindow();
}

void JournalWindows::RefreshJournal() {
  if (formJournal_) formJournal_->Refresh();
}

void JournalWindows::ShowJournalNote(const std::string& text) {
  if (formJournal_) formJournal_->ShowNote(text);
}

void JournalWindows::AskCsvFile(std::function<void(const std::filesystem::path&)> then) {
  delete fileDialog_;
  QWidget* owner = formJournal_ ? static_cast<QWidget*>(formJournal_) : &window_;
  fileDialog_ =
      ShowCsvDialog(owner, "journalFileDialog", "Save Journal as CSV", "Journal.csv", std::move(then));
}

void JournalWindows::ShowOpenAlerts(std::size_t count, std::function<void()> chosen) {
  if (!bell_) return;
  constexpr std::size_t kMost = 999;
  const QString text = count == 1 ? QString("1 unseen alert") : QString("%1 unseen alerts").arg(count);
  bell_->ShowState("bell", text + ": open the journal", count > kMost ? "999+" : QString::number(count));
  bell_->setVisible(count > 0);
  bell_->chosen = std::move(chosen);
}

void JournalWindows::CloseJournal() {
  delete fileDialog_;
  if (formJournal_) formJournal_->hide();  // it tells its place
  delete formJournal_;
}

}  // namespace pallomir
