#include "ui/file_dialog_widget.h"

#include <QFile>
#include <QFileDialog>
#include <QMetaObject>
#include <QStandardPaths>
#include <utility>

namespace pallomir {

QFileDialog* MakeFileDialog(QWidget* owner, const char* name, const QString& title, const QString& folder,
                            std::function<void(const std::filesystem::path&)> then) {
  auto* dialog = new QFileDialog(
      owner, title,
      folder.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) : folder);
  dialog->setObjectName(name);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setOptions(QFileDialog::DontUseNativeDialog | QFileDialog::DontConfirmOverwrite |
                     QFileDialog::ReadOnly);
  dialog->setFileMode(QFileDialog::AnyFile);
  QObject::connect(dialog, &QFileDialog::fileSelected, owner,
                   [owner, then = std::move(then)](const QString& file) {
                     // In the file system's own bytes, which need not be UTF-8.
                     const std::filesystem::path path = QFile::encodeName(file).toStdString();
                     QMetaObject::invokeMethod(
                         owner, [then, path] { then(path); }, Qt::QueuedConnection);
                   });
  return dialog;
}

QFileDialog* ShowCsvDialog(QWidget* owner, const char* name, const QString& title, const QString& file,
                           std::function<void(const std::filesystem::path&)> then) {
  QFileDialog* dialog = MakeFileDialog(owner, name, title, "", std::move(then));
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setNameFilter("CSV (*.csv)");
  dialog->setDefaultSuffix("csv");
  dialog->selectFile(file);
  dialog->show();
  return dialog;
}

}  // namespace pallomir
