#include "journal/formJournal.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <tuple>
#include <utility>

#include "journal/journal_rows_widget.h"

namespace pallomir {
namespace {

constexpr int kRefreshMilliseconds = 150;
constexpr int kPlacedMilliseconds = 500;

// Of what is chosen. To be marked as seen each entry takes a statement of its own.
constexpr std::size_t kMostCopied = 100'000;
constexpr std::size_t kMostChosen = 10'000;

QTimer* OneShot(QObject* owner, int milliseconds, std::function<void()> then) {
  auto* timer = new QTimer(owner);
  timer->setSingleShot(true);
  timer->setInterval(milliseconds);
  QObject::connect(timer, &QTimer::timeout, owner, std::move(then));
  return timer;
}

}  // namespace

formJournal::formJournal(QWidget* owner, JournalList& list, const JournalView::Choices& choices,
                         JournalView::Actions actions)
    : QDialog(owner),
      list_(list),
      actions_(std::move(actions)),
      table_(new QTableView(this)),
      rows_(new JournalRows(list, this)),
      refresh_(OneShot(this, kRefreshMilliseconds, [this] { ShowList(); })),
      placed_(OneShot(this, kPlacedMilliseconds, [this] { TellPlace(); })) {
  setObjectName("formJournal");
  setWindowTitle("Journal");
  setAttribute(Qt::WA_DeleteOnClose);
  setSizeGripEnabled(true);
  auto* filters = new QHBoxLayout;
  auto* buttons = new QHBoxLayout;
  BuildFilters(filters, choices.notifies);
  BuildTable();
  BuildButtons(buttons);
  auto* inside = new QVBoxLayout(this);
  inside->addLayout(filters);
  inside->addWidget(table_);
  inside->addWidget(lblCount_ = new QLabel(this));
  inside->addLayout(buttons);
  lblCount_->setObjectName("lblCount");
  lblCount_->setTextFormat(Qt::PlainText);
  RestorePlace(choices.place);
  ShowList();
  if (rows_->rowCount() > 0) table_->setCurrentIndex(rows_->index(0, 0));
  table_->setFocus();
}

void formJournal::BuildFilters(QHBoxLayout* row, bool notifies) {
  const auto addChoice = [&](const char* name, const QString& label) {
    auto* choice = new QComboBox(this);
    choice->setObjectName(name);
    choice->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    choice->setMinimumContentsLength(16);
    auto* text = new QLabel(label, this);
    text->setBuddy(choice);
    row->addWidget(text);
    row->addWidget(choice, 1);
    connect(choice, &QComboBox::currentIndexChanged, this, &formJournal::ChooseFilter);
    return choice;
  };
  cboUnit_ = addChoice("cboUnit", "&Unit:");
  cboZone_ = addChoice("cboZone", "&Zone:");
  chkAlerts_ = new QCheckBox("A&lerts only", this);
  chkAlerts_->setObjectName("chkAlerts");
  chkAlerts_->setChecked(list_.Filter().alertsOnly);
  connect(chkAlerts_, &QCheckBox::toggled, this, &formJournal::ChooseFilter);
  row->addWidget(chkAlerts_);
  auto* chkNotify = new QCheckBox("Desktop &notifications", this);
  chkNotify->setObjectName("chkNotify");
  chkNotify->setChecked(notifies);
  connect(chkNotify, &QCheckBox::toggled, this, [this](bool on) { actions_.notify(on); });
  row->addWidget(chkNotify);
}

void formJournal::BuildTable() {
  table_->setObjectName("journalTable");
  table_->setAccessibleName("Journal");
  table_->setModel(rows_);
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setTabKeyNavigation(false);
  table_->setWordWrap(false);
  table_->setShowGrid(false);
  table_->setAlternatingRowColors(true);
  table_->verticalHeader()->hide();
  table_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  table_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
  table_->horizontalHeader()->setHighlightSections(false);
  table_->horizontalHeader()->setSectionResizeMode(JournalList::kZone, QHeaderView::Stretch);
  QFont open = font();
  open.setBold(true);  // as alerts are that nobody has seen
  const QFontMetrics bold(open);
  for (const auto& [column, like] : {std::pair(JournalList::kTime, "11/22/26 03:04:05 PM "),
                                     {JournalList::kUnit, "Mobile Unit 123 (stale)"},
                                     {JournalList::kEvent, "Entered (late) "},
                                     {JournalList::kAlert, "Seen 11/22/26 03:04:05 PM "},
                                     {JournalList::kStay, "23 h 59 min "}})
    table_->setColumnWidth(column, bold.horizontalAdvance(like) + 12);
  connect(table_, &QTableView::clicked, this, &formJournal::ShowPlace);
  connect(table_->selectionModel(), &QItemSelectionModel::selectionChanged, this, &formJournal::ShowButtons);
  connect(table_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this](const QModelIndex& at) {
            const JournalEntry* entry = at.isValid() ? list_.At(static_cast<std::size_t>(at.row())) : nullptr;
            current_ = entry ? entry->id : 0;
          });
  const auto addKey = [this](const QKeySequence& key, void (formJournal::*act)()) {
    auto* shortcut = new QShortcut(key, table_, nullptr, nullptr, Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, act);
  };
  addKey(Qt::Key_Return, &formJournal::ShowPlace);
  addKey(Qt::Key_Enter, &formJournal::ShowPlace);
  addKey(QKeySequence::Copy, &formJournal::Copy);
}

// None is pressed by Enter, which belongs to the table.
QPushButton* formJournal::AddButton(QHBoxLayout* row, const QString& caption, const char* name,
                                    void (formJournal::*act)()) {
  auto* button = new QPushButton(caption, this);
  button->setObjectName(name);
  button->setAutoDefault(false);
  if (act) connect(button, &QPushButton::clicked, this, act);
  row->addWidget(button);
  return button;
}

void formJournal::BuildButtons(QHBoxLayout* row) {
  cmdShow_ = AddButton(row, "&Show", "cmdShow", &formJournal::ShowPlace);
  cmdShow_->setToolTip("Enter");
  cmdAcknowledge_ = AddButton(row, "&Acknowledge", "cmdAcknowledge", &formJournal::Acknowledge);
  cmdAcknowledgeAll_ = AddButton(row, "Ac&knowledge All", "cmdAcknowledgeAll", nullptr);
  connect(cmdAcknowledgeAll_, &QPushButton::clicked, this, [this] { actions_.acknowledgeAll(); });
  cmdCopy_ = AddButton(row, "&Copy", "cmdCopy", &formJournal::Copy);
  cmdCopy_->setToolTip("Ctrl+C");
  cmdSave_ = AddButton(row, "Sa&ve as CSV...", "cmdSave", nullptr);
  connect(cmdSave_, &QPushButton::clicked, this, [this] { actions_.save(); });
  row->addStretch();
  connect(AddButton(row, "Cl&ose", "cmdClose", nullptr), &QPushButton::clicked, this, &QDialog::close);
}

// The chosen ones stay chosen. A list that is the same is left alone: it may be open.
void formJournal::FillFilters() {
  const auto units = list_.Units();
  const auto zones = list_.Zones();
  const bool isSame = std::tie(units_, zones_) == std::tie(units, zones) && cboUnit_->count() > 0;
  std::tie(units_, zones_) = std::tie(units, zones);
  if (isSame) return;
  isFilling_ = true;
  const JournalFilter filter = list_.Filter();
  cboUnit_->clear();
  cboUnit_->addItem("All", QString());
  for (const auto& [id, name] : units)
    cboUnit_->addItem(QString::fromStdString(name.empty() ? id : name), QString::fromStdString(id));
  cboZone_->clear();
  cboZone_->addItem("All", QString());
  for (const std::string& zone : zones) {
    const QString text = QString::fromStdString(zone);
    cboZone_->addItem(text, text);
  }
  cboUnit_->setCurrentIndex(std::max(0, cboUnit_->findData(QString::fromStdString(filter.unitId))));
  cboZone_->setCurrentIndex(std::max(0, cboZone_->findData(QString::fromStdString(filter.zone))));
  isFilling_ = false;
}

void formJournal::ChooseFilter() {
  if (isFilling_) return;
  note_.clear();
  table_->selectionModel()->clear();  // in the next list its row is another entry's
  list_.SetFilter({cboUnit_->currentData().toString().toStdString(),
                   cboZone_->currentData().toString().toStdString(), chkAlerts_->isChecked()});
  ShowList();
  table_->scrollToTop();
}

void formJournal::Refresh() {
  if (!refresh_->isActive()) refresh_->start();
}

// What was looked at stays where it is: entries come in at the top.
void formJournal::ShowList() {
  const int current = table_->currentIndex().row();
  const auto id = std::exchange(current_, 0);
  const int before = rows_->rowCount(), scrolled = table_->verticalScrollBar()->value();
  list_.Refresh();
  FillFilters();
  rows_->Reset();
  const int more = rows_->rowCount() - before;
  if (scrolled > 0) table_->verticalScrollBar()->setValue(scrolled + std::max(more, 0));
  for (const int row : {current + more, current}) {
    const JournalEntry* there = id != 0 && row >= 0 ? list_.At(static_cast<std::size_t>(row)) : nullptr;
    if (!there || there->id != id) continue;
    table_->selectionModel()->setCurrentIndex(
        rows_->index(row, 0), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    break;
  }
  ShowButtons();
}

void formJournal::ShowButtons() {
  const auto count = list_.Count();
  QString text = count == 1 ? QString("1 entry") : QLocale::c().toString(qulonglong(count)) + " entries";
  if (count > JournalRows::kMostRows) text += ", of which the newest 1,000,000 show";
  text += ", " + QLocale::c().toString(qulonglong(list_.OpenAlerts())) + " unseen alert(s)";
  lblCount_->setText(note_.isEmpty() ? text : text + ". " + note_);
  const bool hasChosen = table_->selectionModel()->hasSelection();
  for (QPushButton* button : {cmdShow_, cmdAcknowledge_, cmdCopy_}) button->setEnabled(hasChosen);
  cmdAcknowledgeAll_->setEnabled(list_.OpenAlerts() > 0);
  cmdSave_->setEnabled(count > 0);
}

void formJournal::ShowNote(const std::string& text) {
  note_ = QString::fromStdString(text);
  ShowButtons();
}

std::vector<std::size_t> formJournal::Chosen(std::size_t most) const {
  std::vector<std::size_t> rows;
  for (const QItemSelectionRange& range : table_->selectionModel()->selection()) {
    for (int row = range.top(); row <= range.bottom() && rows.size() < most; ++row)
      rows.push_back(static_cast<std::size_t>(row));
  }
  std::ranges::sort(rows);
  return rows;
}

void formJournal::ShowPlace() {
  const QModelIndex current = table_->currentIndex();
  const JournalEntry* entry = current.isValid() ? list_.At(static_cast<std::size_t>(current.row())) : nullptr;
  if (entry) actions_.show(*entry);
}

void formJournal::Acknowledge() {
  std::vector<std::int64_t> ids;
  for (const std::size_t row : Chosen(kMostChosen)) {
    if (const JournalEntry* entry = list_.At(row)) ids.push_back(entry->id);
  }
  actions_.acknowledge(std::move(ids));
}

void formJournal::Copy() {
  const auto rows = Chosen(kMostCopied);
  if (!rows.empty()) QGuiApplication::clipboard()->setText(QString::fromStdString(list_.TextOf(rows)));
}

// "left,top,width,height". Where that is nothing, or nowhere on a screen of now, it is the upper part of the
// owner: what is shown of an entry comes to its middle.
void formJournal::RestorePlace(const std::string& place) {
  const QPoint owner = parentWidget()->mapToGlobal(QPoint(0, 0));
  setGeometry(owner.x() + 60, owner.y() + 90, 940, 240);
  const QStringList parts = QString::fromStdString(place).split(',');
  if (parts.size() != 4) return;
  const QRect rect(parts[0].toInt(), parts[1].toInt(), parts[2].toInt(), parts[3].toInt());
  const auto screens = QGuiApplication::screens();
  const bool isSeen = std::ranges::any_of(screens, [&](const QScreen* screen) {
    const QRect seen = screen->availableGeometry() & rect;
    return seen.width() >= 100 && seen.height() >= 50;
  });
  if (isSeen && rect.width() <= 10'000 && rect.height() <= 10'000) setGeometry(rect);
}

void formJournal::TellPlace() {
  placed_->stop();
  actions_.moved(QString("%1,%2,%3,%4").arg(x()).arg(y()).arg(width()).arg(height()).toStdString());
}

void formJournal::moveEvent(QMoveEvent* event) {
  QDialog::moveEvent(event);
  if (isVisible()) placed_->start();
}

void formJournal::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  if (isVisible()) placed_->start();
}

void formJournal::hideEvent(QHideEvent* event) {
  QDialog::hideEvent(event);
  if (placed_->isActive()) TellPlace();
}

}  // namespace pallomir
