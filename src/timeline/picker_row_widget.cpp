#include "timeline/picker_row_widget.h"

#include <QCursor>
#include <QGuiApplication>
#include <QPushButton>

#include "timeline/date_time_picker_widget.h"

namespace pallomir {
namespace {

// A release may go to another window, the calendar's for one: it is looked for.
constexpr int kLookForRelease = 20;  // milliseconds

}  // namespace

PickerRow::PickerRow(QWidget* parent)
    : QObject(parent),
      DTP_{new DateTimePicker(parent, "DTP(0)", "Start of the time window"),
           new DateTimePicker(parent, "DTP(1)", "End of the time window")},
      cmdOK_Reload_(new QPushButton("Reload", parent)) {
  cmdOK_Reload_->setObjectName("cmdOK_Reload");
  cmdOK_Reload_->setToolTip("Apply the Changes Made to Start/End Times");
  cmdOK_Reload_->setFocusPolicy(Qt::TabFocus);  // a click must leave the keyboard where it is
  cmdOK_Reload_->hide();
  connect(cmdOK_Reload_, &QPushButton::pressed, this, [this] { pressed_ = true; });
  connect(cmdOK_Reload_, &QPushButton::clicked, this, [this] {
    if (reload) reload();
  });
  Connect(0);
  Connect(1);
  catchUp_.setInterval(kLookForRelease);
  connect(&catchUp_, &QTimer::timeout, this, [this] { Show(); });
}

void PickerRow::Connect(int i) {
  DateTimePicker& picker = *DTP_[static_cast<std::size_t>(i)];
  const auto tell = [i](const std::function<void(int)>& callback) {
    if (callback) callback(i);
  };
  picker.gotFocus = [this, tell] {
    pressed_ = true;  // if it was by mouse
    tell(gotFocus);
  };
  picker.lostFocus = [this, tell] { tell(lostFocus); };
  picker.droppedDown = [this, tell] { tell(droppedDown); };
  picker.closedUp = [this, tell] { tell(closedUp); };
  picker.changed = [this, i](Millis value) {
    if (changed) changed(i, value);
  };
  picker.entered = [this] {
    if (cmdOK_Reload_->isVisible()) cmdOK_Reload_->click();
  };
}

std::array<QWidget*, 3> PickerRow::Controls() const { return {DTP_[0], DTP_[1], cmdOK_Reload_}; }

bool PickerRow::IsPressed() {
  if (QGuiApplication::mouseButtons() == Qt::NoButton) pressed_ = false;
  return pressed_;
}

void PickerRow::ShowPicker(int i, Millis value, const QString& format, bool visible) {
  looks_[static_cast<std::size_t>(i)] = {value, format, visible};
  Show();
}

void PickerRow::ShowReload(bool visible) {
  reloadVisible_ = visible;
  Show();
}

void PickerRow::Show() {
  if (IsPressed()) {
    catchUp_.start();
    return;
  }
  catchUp_.stop();
  for (std::size_t i = 0; i < looks_.size(); ++i) {
    DTP_[i]->ShowValue(looks_[i].value, looks_[i].format);
    DTP_[i]->setVisible(looks_[i].visible);
  }
  cmdOK_Reload_->setVisible(reloadVisible_);
}

void PickerRow::MovePointerToReload() {
  QCursor::setPos(cmdOK_Reload_->mapToGlobal(cmdOK_Reload_->rect().center()));
}

bool PickerRow::HasPickerFocus() const {
  const QWidget* focus = cmdOK_Reload_->window()->focusWidget();
  return focus && (focus == DTP_[0] || focus == DTP_[1]);
}

bool PickerRow::FocusStart() {
  if (!DTP_[0]->isVisible()) return false;
  DTP_[0]->FocusDay();
  return true;
}

}  // namespace pallomir
