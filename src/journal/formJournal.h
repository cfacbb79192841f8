#pragma once

#include <QDialog>
#include <cstdint>
#include <string>

#include "journal/journal_view.h"

class QCheckBox;
class QComboBox;
class QHBoxLayout;
class QLabel;
class QPushButton;
class QTableView;
class QTimer;

namespace pallomir {

class JournalRows;

/// The window "Journal": who entered and left which zone, the newest first. Enter or a click shows the place
/// of the current entry on the map; a button says so of each deed.
class formJournal : public QDialog {
 public:
  /// The list outlives the window, which stays over its owner and is modal to nothing.
  formJournal(QWidget* owner, JournalList& list, const JournalView::Choices& choices,
              JournalView::Actions actions);

  /// The list is another one. Shown a moment later, so that a load does not show each part.
  void Refresh();
  void ShowNote(const std::string& text);

 protected:
  void moveEvent(QMoveEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void BuildFilters(QHBoxLayout* row, bool notifies);
  void BuildTable();
  void BuildButtons(QHBoxLayout* row);
  QPushButton* AddButton(QHBoxLayout* row, const QString& caption, const char* name,
                         void (formJournal::*act)());
  void FillFilters();
  void ChooseFilter();
  void ShowList();
  void ShowButtons();
  void RestorePlace(const std::string& place);
  void TellPlace();
  std::vector<std::size_t> Chosen(std::size_t most) const;

  void ShowPlace();
  void Acknowledge();
  void Copy();

  JournalList& list_;
  JournalView::Actions actions_;
  QComboBox* cboUnit_ = nullptr;
  QComboBox* cboZone_ = nullptr;
  QCheckBox* chkAlerts_ = nullptr;
  QTableView* table_;
  JournalRows* rows_;
  QPushButton* cmdShow_ = nullptr;
  QPushButton* cmdAcknowledge_ = nullptr;
  QPushButton* cmdAcknowledgeAll_ = nullptr;
  QPushButton* cmdCopy_ = nullptr;
  QPushButton* cmdSave_ = nullptr;
  QLabel* lblCount_ = nullptr;
  QTimer* refresh_;
  QTimer* placed_;
  std::vector<JournalStore::Unit> units_;  // of the filter, as are the zones
  std::vector<std::string> zones_;
  QString note_;
  std::int64_t current_ = 0;  // the entry of the current row; 0 where there is none
  bool isFilling_ = false;
};

}  // namespace pallomir
