#include "zones/formZoneOptions.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <utility>

namespace pallomir {
namespace {

constexpr const char* kDayNames[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr const char* kWholeDayNames[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                          "Thursday", "Friday", "Saturday"};

// Fills a list without an event; -1 chooses nothing.
void Fill(QComboBox& list, std::span<const std::string> entries, int chosen) {
  const QSignalBlocker quiet(list);
  list.clear();
  for (const std::string& entry : entries) list.addItem(QString::fromStdString(entry));
  list.setCurrentIndex(chosen);
}

}  // namespace

formZoneOptions::formZoneOptions(QWidget* owner, ZonesView::OptionsMode mode, const ZoneOptionsModel& model)
    : QDialog(owner), model_(model), txtDescription_(new QLineEdit(this)) {
  setObjectName("formZoneOptions");
  setWindowTitle("Zone Description and Options");
  setWindowModality(Qt::WindowModal);
  setAttribute(Qt::WA_DeleteOnClose);
  BuildDescription();
  auto* label = new QLabel("D&escription", this);
  label->setBuddy(txtDescription_);
  auto* rows = new QVBoxLayout(this);
  rows->addWidget(label);
  rows->addWidget(txtDescription_);
  rows->addWidget(BuildDays());
  rows->addWidget(BuildHours());
  rows->addWidget(BuildButtons(mode));
  ShowPlaceholder(mode == ZonesView::OptionsMode::kAdd);
  ShowHours();
  ShowComplete();
}

void formZoneOptions::BuildDescription() {
  txtDescription_->setObjectName("txtDescription");
  txtDescription_->setText(QString::fromStdString(model_.Description()));
  txtDescription_->setMinimumWidth(320);
  txtDescription_->installEventFilter(this);
  connect(txtDescription_, &QLineEdit::textEdited, this, [this](const QString& text) {
    ShowPlaceholder(false);
    model_.SetDescription(text.toStdString());
    ShowComplete();
  });
}

QWidget* formZoneOptions::BuildDays() {
  auto* box = new QGroupBox("Days", this);
  auto* row = new QHBoxLayout(box);
  for (std::size_t day = 0; day < ZoneOptionsModel::kDays; ++day) {
    auto* check = new QCheckBox(kDayNames[day], box);
    check->setObjectName("cbDayOfWeek" + QString::number(day));
    check->setAccessibleName(kWholeDayNames[day]);
    check->setChecked(model_.IsDayIncluded(day));
    connect(check, &QCheckBox::toggled, this, [this, day](bool isChecked) {
      model_.IncludeDay(day, isChecked);
      ShowComplete();
    });
    row->addWidget(check);
    cbDayOfWeek_[day] = check;
  }
  return box;
}

QComboBox* formZoneOptions::AddList(const char* name, const QString& accessibleName,
                                    std::function<void(int)> chosen) {
  auto* list = new QComboBox(this);
  list->setObjectName(name);
  list->setAccessibleName(accessibleName);
  list->setMinimumContentsLength(static_cast<int>(std::string_view("12 AM Next Day").size()));
  list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  connect(list, &QComboBox::currentIndexChanged, this, [this, chosen = std::move(chosen)](int index) {
    chosen(index);
    ShowHours();
  });
  return list;
}

QWidget* formZoneOptions::BuildHours() {
  auto* box = new QGroupBox("Hours", this);
  cHr1_ = AddList("cHr1", "On or after, hour", [this](int index) { model_.ChooseStartHour(index); });
  cMin1_ = AddList("cMin1", "On or after, minute", [this](int index) { model_.ChooseStartMinute(index); });
  cHr2_ = AddList("cHr2", "And before, hour", [this](int index) { model_.ChooseEndHour(index); });
  cMin2_ = AddList("cMin2", "And before, minute", [this](int index) { model_.ChooseEndMinute(index); });
  auto* start = new QLabel("&On Or After", box);
  start->setBuddy(cHr1_);
  auto* end = new QLabel("And &Before", box);
  end->setBuddy(cHr2_);
  auto* note = new QLabel("Days and hours decide what the journal calls an alert.", box);
  note->setWordWrap(true);
  auto* grid = new QGridLayout(box);
  grid->addWidget(start, 0, 0);
  grid->addWidget(cHr1_, 0, 1);
  grid->addWidget(cMin1_, 0, 2);
  grid->addWidget(end, 1, 0);
  grid->addWidget(cHr2_, 1, 1);
  grid->addWidget(cMin2_, 1, 2);
  grid->addWidget(note, 2, 0, 1, 3);
  return box;
}

QWidget* formZoneOptions::BuildButtons(ZonesView::OptionsMode mode) {
  auto* box = new QWidget(this);
  auto* row = new QHBoxLayout(box);
  row->setContentsMargins(0, 0, 0, 0);
  row->addStretch();
  const auto add = [&](int index, const QString& caption, const char* name) {
    auto* button = new QPushButton(caption, box);
    button->setObjectName("cmdCmd" + QString::number(index));
    connect(button, &QPushButton::clicked, this, [this, name] { Press(name); });
    row->addWidget(button);
    return button;
  };
  add(0, "&Cancel", "Cancel");
  shape_ = add(1, mode == ZonesView::OptionsMode::kAdd ? "&Add Shape" : "Edit &Shape", "Edit Shape");
  shape_->setDefault(true);
  return box;
}

void formZoneOptions::Press(const char* button) {
  pressed_ = button;
  accept();
}

void formZoneOptions::done(int result) {
  QDialog::done(result);
  if (const auto tell = std::exchange(closed, {})) tell(pressed_.toStdString(), model_.Options());
}

void formZoneOptions::ShowHours() {
  const bool hasHours = !model_.IsAnyTime();
  const auto minutes = hasHours ? ZoneOptionsModel::Minutes() : std::span<const std::string>();
  Fill(*cHr1_, ZoneOptionsModel::StartHours(), model_.StartHour());
  Fill(*cMin1_, minutes, hasHours ? model_.StartMinute() : -1);
  Fill(*cHr2_, model_.EndHours(), hasHours ? model_.EndHour() : -1);
  Fill(*cMin2_, minutes, hasHours ? model_.EndMinute() : -1);
  for (QComboBox* list : {cMin1_, cHr2_, cMin2_}) list->setEnabled(hasHours);
}

void formZoneOptions::ShowComplete() { shape_->setEnabled(model_.IsComplete()); }

void formZoneOptions::ShowPlaceholder(bool isPlaceholder) {
  QPalette palette = this->palette();
  if (isPlaceholder) palette.setColor(QPalette::Text, palette.color(QPalette::PlaceholderText));
  txtDescription_->setPalette(palette);
}

void formZoneOptions::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  txtDescription_->setFocus();
  txtDescription_->selectAll();
}

// A click selects the whole description, as its first key is to replace it.
bool formZoneOptions::eventFilter(QObject* watched, QEvent* event) {
  if (watched == txtDescription_ && event->type() == QEvent::MouseButtonRelease &&
      !txtDescription_->hasSelectedText())
    txtDescription_->selectAll();
  return QDialog::eventFilter(watched, event);
}

}  // namespace pallomir
