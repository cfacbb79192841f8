#pragma once

#include <QDialog>
#include <array>
#include <functional>

#include "zones/zone_options_model.h"
#include "zones/zones_view.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;

namespace pallomir {

/// The dialog "Zone Description and Options", modal to its owner. It shows a model and changes it.
class formZoneOptions : public QDialog {
 public:
  formZoneOptions(QWidget* owner, ZonesView::OptionsMode mode, const ZoneOptionsModel& model);

  /// Called once, when the dialog is closed: with the button's name, or nothing.
  ZonesView::OptionsAnswer closed;

 protected:
  void done(int result) override;
  void showEvent(QShowEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void BuildDescription();
  QWidget* BuildDays();
  QWidget* BuildHours();
  QWidget* BuildButtons(ZonesView::OptionsMode mode);
  QComboBox* AddList(const char* name, const QString& accessibleName, std::function<void(int)> chosen);
  void Press(const char* button);
  void ShowHours();
  void ShowComplete();
  void ShowPlaceholder(bool isPlaceholder);

  ZoneOptionsModel model_;
  QString pressed_;
  QLineEdit* txtDescription_;
  std::array<QCheckBox*, ZoneOptionsModel::kDays> cbDayOfWeek_{};
  QComboBox* cHr1_ = nullptr;
  QComboBox* cMin1_ = nullptr;
  QComboBox* cHr2_ = nullptr;
  QComboBox* cMin2_ = nullptr;
  QPushButton* shape_ = nullptr;
};

}  // namespace pallomir
