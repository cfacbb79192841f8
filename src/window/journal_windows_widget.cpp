#include "window/journal_windows_widget.h"

#include <QFileDialog>
#include <utility>

#include "journal/formJournal.h"
#include "ui/file_dialog_widget.h"
#include "window/bell_button_widget.h"
#include "window/caption_line_widget.h"
#include "window/formMain.h"

namespace pallomir {

JournalWindows::JournalWindows(formMain& window) : window_(window) {
  auto* line = static_cast<CaptionLine*>(window_.findChild<QWidget*>("captionLine"));
  bell_ = new BellButton(line);
  line->AddState(bell_);
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
  fileDialog_ = MakeFileDialog(owner, "journalFileDialog", "Save Journal as CSV", "", std::move(then));
  fileDialog_->setAcceptMode(QFileDialog::AcceptSave);
  fileDialog_->setNameFilter("CSV (*.csv)");
  fileDialog_->setDefaultSuffix("csv");
  fileDialog_->selectFile("Journal.csv");
  fileDialog_->show();
}

void JournalWindows::ShowOpenAlerts(std::size_t count, std::function<void()> chosen) {
  if (!bell_) return;
  bell_->ShowCount(count);
  bell_->chosen = std::move(chosen);
}

void JournalWindows::CloseJournal() {
  delete fileDialog_;
  if (formJournal_) formJournal_->hide();  // it tells its place
  delete formJournal_;
}

}  // namespace pallomir
