#include "zones/zone_windows_widget.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QMetaObject>
#include <QPushButton>
#include <utility>

#include "ui/file_dialog_widget.h"
#include "zones/formZoneList.h"
#include "zones/formZoneOptions.h"
#include "zones/zone_path_widget.h"
#include "zones/zone_progress_widget.h"

namespace pallomir {
namespace {

constexpr char kGeoJsonFilter[] = "GeoJSON (*.geojson *.json)";
constexpr char kKmlFilter[] = "KML (*.kml)";

// Queued: the window that gave the answer has gone by the time that the next one opens.
template <class Work>
void Later(QWidget* owner, Work work) {
  QMetaObject::invokeMethod(owner, std::move(work), Qt::QueuedConnection);
}

}  // namespace

void ZoneWindows::Execute(OptionsMode mode, const ZoneOptionsModel& model, OptionsAnswer then) {
  delete formZoneOptions_;
  formZoneOptions_ = new formZoneOptions(owner_, mode, model);
  formZoneOptions_->closed = [owner = owner_, then = std::move(then)](const std::string& button,
                                                                      const ZoneOptions& options) {
    Later(owner, [then, button, options] { then(button, options); });
  };
  formZoneOptions_->show();
}

QFileDialog* ZoneWindows::OpenFileDialog(const QString& title, FileAnswer then) {
  delete fileDialog_;
  fileDialog_ = MakeFileDialog(owner_, "zoneFileDialog", title, folder_, std::move(then));
  QObject::connect(fileDialog_, &QFileDialog::fileSelected, fileDialog_,
                   [this](const QString& file) { folder_ = QFileInfo(file).path(); });
  return fileDialog_;
}

void ZoneWindows::AskExportFile(FileAnswer then) {
  QFileDialog* dialog = OpenFileDialog("Export Zones", std::move(then));
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setNameFilters({kGeoJsonFilter, kKmlFilter});
  dialog->setDefaultSuffix("geojson");
  QObject::connect(dialog, &QFileDialog::filterSelected, dialog, [dialog](const QString& filter) {
    dialog->setDefaultSuffix(filter == kKmlFilter ? "kml" : "geojson");
  });
  dialog->selectFile("Zones");
  dialog->show();
}

void ZoneWindows::AskImportFile(FileAnswer then) {
  QFileDialog* dialog = OpenFileDialog("Import Zones", std::move(then));
  dialog->setAcceptMode(QFileDialog::AcceptOpen);
  dialog->setNameFilters({"Zones (*.geojson *.json *.kml)", kGeoJsonFilter, kKmlFilter});
  dialog->show();
}

void ZoneWindows::AskAddOrReplace(const std::string& text, ImportAnswer then) {
  delete importQuestion_;
  auto* box = new QMessageBox(owner_);
  box->setObjectName("importQuestion");
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setWindowTitle("Import Zones");
  box->setIcon(QMessageBox::Question);
  box->setTextFormat(Qt::PlainText);
  box->setText(QString::fromStdString(text));
  const auto* add = box->addButton("&Add", QMessageBox::AcceptRole);
  const auto* replace = box->addButton("&Replace", QMessageBox::DestructiveRole);
  box->setDefaultButton(box->addButton(QMessageBox::Cancel));
  QObject::connect(box, &QDialog::finished, owner_, [this, box, add, replace, then = std::move(then)](int) {
    const auto choice = box->clickedButton() == add       ? ImportChoice::kAdd
                        : box->clickedButton() == replace ? ImportChoice::kReplace
                                                          : ImportChoice::kCancel;
    Later(owner_, [then, choice] { then(choice); });
  });
  importQuestion_ = box;
  box->open();
}

void ZoneWindows::ShowProgress(const std::string& text, int percent, std::function<void()> cancel) {
  if (!progress_) progress_ = new ZoneProgress(owner_);
  progress_->cancelled = std::move(cancel);
  progress_->Show(QString::fromStdString(text), percent);
}

void ZoneWindows::HideProgress() {
  if (progress_) progress_->hide();
}

void ZoneWindows::ShowList(const ZoneListModel& model, ListActions actions) {
  if (!formZoneList_) {
    formZoneList_ = new formZoneList(owner_, model, std::move(actions));
    formZoneList_->show();
  }
  formZoneList_->raise();
  formZoneList_->activateWindow();
}

void ZoneWindows::RefreshList() {
  if (formZoneList_) formZoneList_->Refresh();
}

void ZoneWindows::ShowPath(const std::string& path) {
  if (!pathTip_) pathTip_ = new ZonePathTip(owner_);
  pathTip_->ShowText(QString::fromStdString(path));
}

void ZoneWindows::HidePath() {
  if (pathTip_) pathTip_->hide();
}

void ZoneWindows::Close() {
  HidePath();
  delete formZoneList_;
  delete formZoneOptions_;
  delete fileDialog_;
  delete importQuestion_;
  delete progress_;
}

}  // namespace pallomir
