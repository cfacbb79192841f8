#pragma once

#include <QDialog>

#include "reports/been_here.h"
#include "reports/visits_view.h"

class QCheckBox;
class QComboBox;
class QGridLayout;
class QHBoxLayout;
class QLabel;
class QListWidget;
class QProgressBar;
class QPushButton;
class QRadioButton;

namespace pallomir {

class DateTimePicker;
class VisitCalendar;

/// The window "Been Here?": asks which units and which time to search, and lists the visits found. Enter or a
/// double-click on a line loads its days; Escape ends a search, and without one closes the window.
class formBeenHere : public QDialog {
 public:
  /// The search outlives the window, which stays over its owner and is modal to nothing.
  formBeenHere(QWidget* owner, BeenHere& search, VisitsView::Actions actions);

  /// Another place is searched.
  void ShowTarget();
  /// What is found, or how far the search is, has changed.
  void Refresh();

  void reject() override;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void BuildChoices(QGridLayout* grid);
  void BuildPlace(QGridLayout* grid);
  void BuildRange(QGridLayout* grid);
  void BuildEvents(QGridLayout* grid);
  void BuildSearch(QHBoxLayout* row);
  void BuildList();
  void BuildButtons(QHBoxLayout* row);
  QPushButton* AddButton(QHBoxLayout* row, const QString& caption, const char* name);
  void ShowChoices();
  void LayOutForEvents();
  void ShowVisits();
  void ShowDetails();
  void LoadCurrent();
  void Copy();
  void Leave();
  QSize SizeOfForm(int height) const;

  BeenHere& search_;
  VisitsView::Actions actions_;
  QLabel* lblGeoCode_ = nullptr;
  QLabel* lblReverseGeoCode_ = nullptr;
  QComboBox* MobileUnit_ = nullptr;
  QComboBox* cboPlace_ = nullptr;  // this computer, or the server
  DateTimePicker* DT_[2] = {};
  QCheckBox* cbInterval_[2] = {};  // "Until Now", "From the Beginning of Data"
  QWidget* range_ = nullptr;       // holds pickers and boxes
  QRadioButton* WhichEvents_[2] = {};
  QPushButton* cmdSearch_ = nullptr;
  QPushButton* cmdCancel_ = nullptr;
  QProgressBar* progress_ = nullptr;
  QLabel* lblFiles_ = nullptr;
  QListWidget* txtT_ = nullptr;
  VisitCalendar* calendar_ = nullptr;
  QLabel* lblDetails_ = nullptr;
  QLabel* lblStatus_ = nullptr;
  QPushButton* cmdLoad_ = nullptr;
  QPushButton* cmdCopy_ = nullptr;
  QPushButton* cmdSave_ = nullptr;
  std::vector<Visit> shown_;  // as the list has them
  bool hasLeft_ = false;
};

}  // namespace pallomir
