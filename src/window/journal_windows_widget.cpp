#include "window/journal_windows_widget.h"

#include <QFile>
#include <QFileDialog>
#include <QStandardPaths>
#include <utility>

#include "journal/formJournal.h"
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

// Without messages of its own: they would wait in an event loop of theirs. Whether a file may be replaced is
// asked by who gets the answer.
void JournalWindows::AskCsvFile(std::function<void(const std::filesystem::path&)> then) {
  delete fileDialog_;
  QWidget* owner = formJournal_ ? static_cast<QWidget*>(formJournal_) : &window_;
  fileDialog_ = new QFileDialog(owner, "Save Journal as CSV",
                                QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
  fileDialog_->setObjectName("journalFileDialog");
  fileDialog_->setAttribute(Qt::WA_DeleteOnClose);
  fileDialog_->setOptions(QFileDialog::DontUseNativeDialog | QFileDialog::DontConfirmOverwrite |
                          QFileDialog::ReadOnly);
  fileDialog_->setFileMode(QFileDialog::AnyFile);
  fileDialog_->setAcceptMode(QFileDialog::AcceptSave);
  fileDialog_->setNameFilter("CSV (*.csv)");
  fileDialog_->setDefaultSuffix("csv");
  fileDialog_->selectFile("Journal.csv");
  QObject::connect(fileDialog_, &QFileDialog::fileSelected, &window_,
                   [window = &window_, then = std::move(then)](const QString& file) {
                     const std::filesystem::path path = QFile::encodeName(file).toStdString();
                     QMetaObject::invokeMethod(
                         window, [then, path] { then(path); }, Qt::QueuedConnection);
                   });
  fileDialog_->show();
}

void JournalWindows::ShowOpenAlerts(std::size_t count, std::function<void()> chosen) {
  if (!bell_) return;
  bell_->ShowCount(count);
  bell_->chosen = std::move(chosen);
}

void JournalWindows::CloseJournal() {
  delete fileDialog_;
  delete formJournal_;
}

}  // namespace pallomir
