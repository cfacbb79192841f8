#include "reports/formBeenHere.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "reports/visit_calendar_widget.h"
#include "timeline/date_pickers.h"
#include "timeline/date_time_picker_widget.h"

namespace pallomir {
namespace {

// 6495 and 2730 twips, and what shows some lines over the calendar: more than 6000 twips.
constexpr int kWidth = 433;
constexpr int kSmallHeight = 182;
constexpr int kLargeHeight = 540;
constexpr int kAll = 0, kMostRecent = 1;  // of WhichEvents

QString Text(const std::string& text) { return QString::fromStdString(text); }

QLabel* PlainLabel(QWidget* owner, const char* name) {
  auto* label = new QLabel(owner);
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  return label;
}

}  // namespace

formBeenHere::formBeenHere(QWidget* owner, BeenHere& search, VisitsView::Actions actions)
    : QDialog(owner), search_(search), actions_(std::move(actions)) {
  setObjectName("formBeenHere");
  setAttribute(Qt::WA_DeleteOnClose);
  setSizeGripEnabled(true);
  auto* choices = new QGridLayout;
  auto* searching = new QHBoxLayout;
  auto* buttons = new QHBoxLayout;
  BuildChoices(choices);
  BuildPlace(choices);
  BuildEvents(choices);
  BuildRange(choices);
  BuildSearch(searching);
  BuildList();
  BuildButtons(buttons);
  auto* inside = new QVBoxLayout(this);
  inside->setSpacing(4);
  inside->addLayout(choices);
  inside->addLayout(searching);
  inside->addWidget(txtT_, 1);
  inside->addWidget(lblDetails_);
  inside->addWidget(calendar_);
  inside->addWidget(lblStatus_);
  inside->addLayout(buttons);
  connect(this, &QDialog::finished, this, &formBeenHere::Leave);
  ShowTarget();
}

void formBeenHere::BuildChoices(QGridLayout* grid) {
  lblGeoCode_ = PlainLabel(this, "lblGeoCode");
  lblReverseGeoCode_ = PlainLabel(this, "lblReverseGeoCode");
  grid->addWidget(lblGeoCode_, 0, 0);
  grid->addWidget(lblReverseGeoCode_, 0, 1);
  grid->setColumnStretch(1, 1);
  MobileUnit_ = new QComboBox(this);
  MobileUnit_->setObjectName("MobileUnit");
  MobileUnit_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  MobileUnit_->setMinimumContentsLength(20);
  auto* label = new QLabel("Mobile &unit:", this);
  label->setBuddy(MobileUnit_);
  grid->addWidget(label, 1, 0);
  grid->addWidget(MobileUnit_, 1, 1);
  connect(MobileUnit_, &QComboBox::currentIndexChanged, this,
          [this](int index) { search_.choices.unit = static_cast<std::size_t>(std::max(index, 0)); });
}

void formBeenHere::BuildPlace(QGridLayout* grid) {
  cboPlace_ = new QComboBox(this);
  cboPlace_->setObjectName("cboPlace");
  cboPlace_->addItems({"This computer", "The server"});
  auto* label = new QLabel("Data &of:", this);
  label->setBuddy(cboPlace_);
  grid->addWidget(label, 2, 0);
  grid->addWidget(cboPlace_, 2, 1);
  connect(cboPlace_, &QComboBox::currentIndexChanged, this,
          [this](int index) { search_.choices.atServer = index == 1; });
}

void formBeenHere::BuildRange(QGridLayout* grid) {
  range_ = new QWidget(this);
  auto* rows = new QGridLayout(range_);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setColumnStretch(2, 1);
  const char* const captions[] = {"&Start:", "&End:"};
  const char* const boxes[] = {"Until &Now", "From the &Beginning of Data"};
  for (const int i : {0, 1}) {
    DT_[i] =
        new DateTimePicker(range_, QString("DT(%1)").arg(i), i == 0 ? "Start of search" : "End of search");
    DT_[i]->changed = [this, i](Millis value) {
      (i == 0 ? search_.choices.range.start : search_.choices.range.end) = value;
    };
    DT_[i]->entered = [this] { search_.Search(); };
    auto* label = new QLabel(captions[i], range_);
    label->setBuddy(DT_[i]);
    rows->addWidget(label, i, 0);
    rows->addWidget(DT_[i], i, 1);
  }
  for (const int i : {0, 1}) {
    cbInterval_[i] = new QCheckBox(boxes[i], range_);
    cbInterval_[i]->setObjectName(QString("cbInterval(%1)").arg(i));
    rows->addWidget(cbInterval_[i], 1 - i, 2);  // each beside its picker
    connect(cbInterval_[i], &QCheckBox::toggled, this, [this, i](bool on) {
      (i == 0 ? search_.choices.untilNow : search_.choices.fromBeginning) = on;
      DT_[1 - i]->setEnabled(!on);
    });
  }
  // Tab goes row by row.
  setTabOrder(DT_[0], cbInterval_[1]);
  setTabOrder(cbInterval_[1], DT_[1]);
  setTabOrder(DT_[1], cbInterval_[0]);
  grid->addWidget(range_, 4, 0, 1, 2);
}

void formBeenHere::BuildEvents(QGridLayout* grid) {
  const char* const captions[] = {"&All Events in Range (up to 500)", "&Most Recent Event Only"};
  auto* row = new QHBoxLayout;
  for (const int i : {kAll, kMostRecent}) {
    WhichEvents_[i] = new QRadioButton(captions[i], this);
    WhichEvents_[i]->setObjectName(QString("WhichEvents(%1)").arg(i));
    row->addWidget(WhichEvents_[i]);
  }
  row->addStretch();
  grid->addLayout(row, 3, 0, 1, 2);
  connect(WhichEvents_[kMostRecent], &QRadioButton::toggled, this, [this](bool on) {
    search_.choices.mostRecentOnly = on;
    LayOutForEvents();
  });
}

void formBeenHere::BuildSearch(QHBoxLayout* row) {
  cmdSearch_ = AddButton(row, "Search Now", "cmdSearch");
  const QString widest = Text(SearchingCaption(999 * VisitSearch::kRecordsPerBlock)) + "MM";
  cmdSearch_->setMinimumWidth(fontMetrics().horizontalAdvance(widest));
  cmdSearch_->setDefault(true);
  connect(cmdSearch_, &QPushButton::clicked, this, [this] { search_.Search(); });
  cmdCancel_ = AddButton(row, "Cancel", "cmdCancel");
  connect(cmdCancel_, &QPushButton::clicked, this, &formBeenHere::reject);
  progress_ = new QProgressBar(this);
  progress_->setObjectName("searchProgress");
  progress_->setAccessibleName("Progress of the search");
  row->addWidget(progress_, 1);
  lblFiles_ = PlainLabel(this, "lblFiles");
  lblFiles_->setWordWrap(false);
  row->addWidget(lblFiles_);
  row->addStretch();
}

void formBeenHere::BuildList() {
  txtT_ = new QListWidget(this);
  txtT_->setObjectName("txtT");
  txtT_->setAccessibleName("Visits");
  txtT_->setUniformItemSizes(true);
  txtT_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  txtT_->setMinimumHeight(txtT_->fontMetrics().height() * 3 / 2 + 2 * txtT_->frameWidth());
  lblDetails_ = PlainLabel(this, "lblDetails");
  calendar_ = new VisitCalendar(this);
  calendar_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Maximum);
  calendar_->chosen = [this](std::size_t visit) { txtT_->setCurrentRow(static_cast<int>(visit)); };
  lblStatus_ = PlainLabel(this, "lblStatus");
  connect(txtT_, &QListWidget::currentRowChanged, this, &formBeenHere::ShowDetails);
  const auto addKey = [this](QListWidget* list, const QKeySequence& key, void (formBeenHere::*act)()) {
    auto* shortcut = new QShortcut(key, list, nullptr, nullptr, Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, act);
  };
  for (QListWidget* list : {txtT_, static_cast<QListWidget*>(calendar_)}) {
    addKey(list, Qt::Key_Return, &formBeenHere::LoadCurrent);
    addKey(list, Qt::Key_Enter, &formBeenHere::LoadCurrent);
    addKey(list, QKeySequence::Copy, &formBeenHere::Copy);
    connect(list, &QListWidget::itemDoubleClicked, this, &formBeenHere::LoadCurrent);
  }
}

QPushButton* formBeenHere::AddButton(QHBoxLayout* row, const QString& caption, const char* name) {
  auto* button = new QPushButton(caption, this);
  button->setObjectName(name);
  button->setAutoDefault(false);
  row->addWidget(button);
  return button;
}

void formBeenHere::BuildButtons(QHBoxLayout* row) {
  cmdLoad_ = AddButton(row, "&Load Days", "cmdLoad");
  cmdLoad_->setToolTip("Enter");
  connect(cmdLoad_, &QPushButton::clicked, this, &formBeenHere::LoadCurrent);
  cmdCopy_ = AddButton(row, "&Copy", "cmdCopy");
  cmdCopy_->setToolTip("Ctrl+C");
  connect(cmdCopy_, &QPushButton::clicked, this, &formBeenHere::Copy);
  cmdSave_ = AddButton(row, "Sa&ve as CSV...", "cmdSave");
  connect(cmdSave_, &QPushButton::clicked, this, [this] { actions_.save(); });
  row->addStretch();
}

void formBeenHere::ShowTarget() {
  lblGeoCode_->setText(search_.Target().isZone ? "Zone:" : Text(search_.Target().name));
  const QSignalBlocker quiet(MobileUnit_);
  MobileUnit_->clear();
  MobileUnit_->addItem("All Mobile Units");
  for (const SearchedUnit& unit : search_.Units()) MobileUnit_->addItem(Text(unit.caption));
  ShowChoices();
  Refresh();
  MobileUnit_->setFocus();
}

void formBeenHere::ShowChoices() {
  const VisitChoices choices = search_.choices;  // the widgets write into it
  MobileUnit_->setCurrentIndex(static_cast<int>(choices.unit));
  cboPlace_->setCurrentIndex(choices.atServer ? 1 : 0);
  cboPlace_->setEnabled(!search_.Target().isZone);
  cboPlace_->setToolTip(search_.Target().isZone ? "The server does not know the zones of this computer" : "");
  DT_[0]->ShowValue(choices.range.start, kEditingFormat);
  DT_[1]->ShowValue(choices.range.end, kEditingFormat);
  cbInterval_[0]->setChecked(choices.untilNow);
  cbInterval_[1]->setChecked(choices.fromBeginning);
  WhichEvents_[choices.mostRecentOnly ? kMostRecent : kAll]->setChecked(true);
  LayOutForEvents();
}

// The most recent event is looked for at all times, and needs a single line.
void formBeenHere::LayOutForEvents() {
  const bool isSmall = search_.choices.mostRecentOnly;
  range_->setVisible(!isSmall);
  calendar_->setVisible(!isSmall && !shown_.empty());
  layout()->activate();
  resize(std::max(width(), minimumSizeHint().width()),
         SizeOfForm(isSmall ? kSmallHeight : kLargeHeight).height());
}

// The sizes are those of a font of 13 pixels; they grow with it.
QSize formBeenHere::SizeOfForm(int height) const {
  constexpr int kUsualFont = 16;  // its line's height
  const double scale = std::max(1.0, static_cast<double>(fontMetrics().height()) / kUsualFont);
  return QSize(static_cast<int>(kWidth * scale), static_cast<int>(height * scale))
      .expandedTo(minimumSizeHint());
}

void formBeenHere::Refresh() {
  setWindowTitle(Text(search_.Caption()));
  lblReverseGeoCode_->setText(Text(search_.Address()));
  const bool isSearching = search_.IsSearching();
  cmdSearch_->setText(Text(search_.ButtonCaption()));
  progress_->setVisible(isSearching);
  progress_->setRange(0, search_.IsAsking() ? 0 : 100);
  progress_->setValue(search_.Percent());
  lblFiles_->setVisible(isSearching);
  lblFiles_->setText(Text(search_.ProgressText()));
  lblStatus_->setText(Text(search_.Status()));
  if (search_.Visits() != shown_) ShowVisits();
  ShowDetails();
}

void formBeenHere::ShowVisits() {
  shown_ = search_.Visits();
  const QSignalBlocker quiet(txtT_);
  txtT_->clear();
  for (std::size_t i = 0; i < shown_.size(); ++i) {
    auto* item = new QListWidgetItem(Text(search_.Line(i)), txtT_);
    QPixmap colour(10, 10);
    colour.fill(QColor::fromRgb(search_.Units()[shown_[i].unit].colour));
    item->setIcon(colour);
  }
  calendar_->ShowDays(DaysOfVisits(shown_, search_.Clock()), search_.Units());
  calendar_->setVisible(!search_.choices.mostRecentOnly && !shown_.empty());
  if (shown_.empty()) return;
  txtT_->setCurrentRow(0);
  if (cmdSearch_->hasFocus()) txtT_->setFocus();
}

void formBeenHere::ShowDetails() {
  const int row = txtT_->currentRow();
  const bool hasVisit = row >= 0;
  if (hasVisit && !calendar_->hasFocus()) calendar_->ShowVisit(static_cast<std::size_t>(row));
  lblDetails_->setText(hasVisit ? Text(search_.Details(static_cast<std::size_t>(row))) : QString());
  for (QPushButton* button : {cmdLoad_, cmdCopy_, cmdSave_}) button->setEnabled(hasVisit);
}

void formBeenHere::LoadCurrent() {
  const int row = txtT_->currentRow();
  if (row >= 0) search_.Load(static_cast<std::size_t>(row));
}

void formBeenHere::Copy() { QGuiApplication::clipboard()->setText(Text(search_.Text())); }

// Escape, "Cancel" and the close button.
void formBeenHere::reject() {
  if (!search_.Cancel()) QDialog::reject();
}

void formBeenHere::closeEvent(QCloseEvent* event) {
  search_.Close();
  QDialog::closeEvent(event);
}

void formBeenHere::Leave() {
  if (!std::exchange(hasLeft_, true)) actions_.closed();
}

}  // namespace pallomir
