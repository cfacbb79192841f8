#pragma once

#include <QPointer>
#include <QWidget>

#include "zones/zones_view.h"

class QFileDialog;
class QMessageBox;

namespace pallomir {

class ZonePathTip;
class ZoneProgress;
class formZoneList;
class formZoneOptions;

/// The windows of the zones over the main window. No two of a kind are open at a time: who asks anew takes
/// the older one away.
class ZoneWindows : public ZonesView {
 public:
  /// `owner` outlives this object.
  explicit ZoneWindows(QWidget* owner) : owner_(owner) {}

  void Execute(OptionsMode mode, const ZoneOptionsModel& model, OptionsAnswer then) override;
  void AskExportFile(FileAnswer then) override;
  void AskImportFile(FileAnswer then) override;
  void AskAddOrReplace(const std::string& text, ImportAnswer then) override;
  void ShowProgress(const std::string& text, int percent, std::function<void()> cancel) override;
  void HideProgress() override;
  void ShowList(const ZoneListModel& model, ListActions actions) override;
  void RefreshList() override;
  void ShowPath(const std::string& path) override;
  void HidePath() override;
  void Close() override;

 private:
  QFileDialog* OpenFileDialog(const QString& title, FileAnswer then);

  QWidget* owner_;
  QPointer<formZoneOptions> formZoneOptions_;
  QPointer<formZoneList> formZoneList_;
  QPointer<QFileDialog> fileDialog_;
  QPointer<QMessageBox> importQuestion_;
  QPointer<ZoneProgress> progress_;
  QPointer<ZonePathTip> pathTip_;
  QString folder_;  // where the last file lay
};

}  // namespace pallomir
