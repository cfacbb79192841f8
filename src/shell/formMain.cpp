#include "shell/formMain.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QCursor>
#include <QFrame>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

#include "map/map_view.h"
#include "platform/qt/qt_menu.h"
#include "shell/client.h"
#include "shell/formMapUpdating.h"
#include "shell/formSplash.h"
#include "shell/key_of_event_widget.h"
#include "shell/point_marker_widget.h"
#include "timeline/date_time_picker_widget.h"
#include "timeline/timeline_info_widget.h"
#include "timeline/timeline_strip_widget.h"
#include "tracking/FormRetryAfterError.h"

namespace pallomir {
namespace {

constexpr int kSmallestWidth = 640;
constexpr int kSmallestHeight = 360;

QString Text(const std::string& utf8) {
  return QString::fromStdString(utf8);
}

}  // namespace

formMain::formMain(QWidget* browser) : WB_(browser) {
  setObjectName("formMain");
  setWindowTitle("Pallomir");
  setMinimumSize(kSmallestWidth, kSmallestHeight);
  mapArea_ = new QWidget(this);
  WB_->setParent(mapArea_);
  WB_->setObjectName("WB");
  BuildTimelineFrame();
  FocusGetter_ = new QCheckBox(this);
  FocusGetter_->setObjectName("FocusGetter");
  FocusGetter_->setAccessibleName("Map keyboard");
  FocusGetter_->setGeometry(0, 0, 1, 1);
  frameTimelineInfo_ = new TimelineInfo(this);
  formSplash_ = new formSplash(this);
  formMapUpdating_ = new formMapUpdating(this);
  marker_ = std::make_unique<PointMarker>(mapArea_);
  FormRetryAfterError_ = new FormRetryAfterError(this);
}

formMain::~formMain() {
  qApp->removeEventFilter(this);
}

void formMain::BuildTimelineFrame() {
  frameTimeLine_ = new QFrame(this);
  frameTimeLine_->setObjectName("frameTimeLine");
  lblMenu_ = new QPushButton("Menu", frameTimeLine_);
  lblMenu_->setObjectName("lblMenu");
  DTP_[0] = new DateTimePicker(frameTimeLine_, "DTP(0)", "Start of the time window");
  DTP_[1] = new DateTimePicker(frameTimeLine_, "DTP(1)", "End of the time window");
  cmdOK_Reload_ = new QPushButton("Reload", frameTimeLine_);
  cmdOK_Reload_->setObjectName("cmdOK_Reload");
  cmdOK_Reload_->setToolTip("Apply the Changes Made to Start/End Times");
  cmdOK_Reload_->hide();
  lblCaption_ = new QLabel(frameTimeLine_);
  lblCaption_->setObjectName("lblCaption");
  lblCaption_->setTextFormat(Qt::PlainText);
  lblCaption_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  lblCaption_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  strip_ = new TimelineStrip(frameTimeLine_);
  auto* row = new QHBoxLayout;
  row->setContentsMargins(6, 4, 6, 4);
  for (QWidget* widget : {static_cast<QWidget*>(lblMenu_), static_cast<QWidget*>(DTP_[0]),
                          static_cast<QWidget*>(DTP_[1]), static_cast<QWidget*>(cmdOK_Reload_)}) {
    row->addWidget(widget);
  }
  row->addWidget(lblCaption_, 1);
  auto* parts = new QVBoxLayout(frameTimeLine_);
  parts->setContentsMargins(0, 0, 0, 0);
  parts->setSpacing(0);
  parts->addWidget(strip_, 1);
  parts->addLayout(row);
}

void formMain::Attach(Client& client) {
  client_ = &client;
  formMnu_ = std::make_unique<QtMenu>(client.Menus(), "mnuPopup", this);
  connect(lblMenu_, &QPushButton::clicked, this, [this] { client_->MenuButtonClicked(); });
  connect(cmdOK_Reload_, &QPushButton::clicked, this, [this] { client_->ReloadClicked(); });
  ConnectPicker(0);
  ConnectPicker(1);
  strip_->dragFinished = [this](double from, double to) { client_->TimelineDragged(from, to); };
  strip_->hovered = [this](int timelineRow, int column) { client_->TimelineHovered(timelineRow, column); };
  strip_->left = [this] { client_->TimelineLeft(); };
  strip_->layoutClicked = [this] { client_->Timeline_Resize(); };
  FormRetryAfterError_->retryNow = [this] { client_->RetryNow(); };
  FormRetryAfterError_->stopRetrying = [this] { client_->StopRetrying(); };
  FormRetryAfterError_->quit = [this] { client_->EndSession(); };
  qApp->installEventFilter(this);
}

void formMain::ConnectPicker(int i) {
  DateTimePicker& picker = *DTP_[static_cast<std::size_t>(i)];
  picker.gotFocus = [this, i] { client_->PickerGotFocus(i); };
  picker.lostFocus = [this, i] { client_->PickerLostFocus(i); };
  picker.changed = [this, i](Millis value) { client_->PickerChanged(i, value); };
  picker.droppedDown = [this, i] { client_->PickerDroppedDown(i); };
  picker.closedUp = [this, i] { client_->PickerClosedUp(i); };
}

void formMain::SetCaption(const std::string& text) {
  lblCaption_->setText(Text(text));
  lblCaption_->setToolTip(Text(text));
}

void formMain::ShowCaption(bool visible) {
  lblCaption_->setVisible(visible);
}

void formMain::LayOut() {
  strip_->setFixedHeight(strip_->HeightIn(height()));
  const int frameHeight = frameTimeLine_->isHidden() ? 0 : frameTimeLine_->sizeHint().height();
  const int mapHeight = std::max(0, height() - frameHeight);
  mapArea_->setGeometry(0, 0, width(), mapHeight);
  WB_->setGeometry(0, 0, width() + kUnusedBrowserWidth, mapHeight);
  frameTimeLine_->setGeometry(0, mapHeight, width(), frameHeight);
}

PixelSize formMain::BrowserSize() const {
  return {WB_->width(), WB_->height()};
}

bool formMain::IsTimelineVisible() const {
  return !frameTimeLine_->isHidden();
}

void formMain::ShowTimeline(bool visible) {
  frameTimeLine_->setVisible(visible);
}

void formMain::SetMenuLabel(const std::string& text) {
  lblMenu_->setText(Text(text));
}

void formMain::LayOutTimeline(std::size_t rows) {
  strip_->LayOutRows(static_cast<int>(rows));
}
int formMain::TimelineWidth() const {
  return strip_->ScaleWidth();
}
void formMain::ShowTimelinePicture(const TimelinePicture& picture) {
  strip_->Redraw(picture);
}

void formMain::ShowTimelineInfo(const std::string& text) {
  frameTimelineInfo_->ShowText(Text(text), strip_->mapTo(this, strip_->PointerPosition()),
                               mapArea_->geometry());
}

void formMain::HideTimelineInfo() {
  frameTimelineInfo_->hide();
}

void formMain::ShowSplash() {
  formSplash_->ShowCentred();
}
void formMain::TickStatus(int line) {
  formSplash_->Tick(line);
}
void formMain::HideSplash() {
  formSplash_->hide();
}
void formMain::ShowMapUpdating() {
  formMapUpdating_->ShowNotice();
}
void formMain::HideMapUpdating() {
  formMapUpdating_->hide();
}

void formMain::ShowRetry(const std::string& message) {
  FormRetryAfterError_->SetMessage(Text(message));
  FormRetryAfterError_->show();
}

void formMain::SetRetryProgress(int bar, const std::string& label) {
  FormRetryAfterError_->SetProgress(bar, Text(label));
}

void formMain::HideRetry() {
  FormRetryAfterError_->hide();
}

void formMain::ShowPointMarker(ViewPoint at) {
  marker_->ShowAt({at.x, at.y});
}
void formMain::HidePointMarker() {
  marker_->Hide();
}

void formMain::ShowPicker(int i, Millis value, const std::string& format, bool visible) {
  DateTimePicker* picker = DTP_[static_cast<std::size_t>(i)];
  picker->ShowValue(value, Text(format));
  picker->setVisible(visible);
}

void formMain::ShowReloadButton(bool visible) {
  cmdOK_Reload_->setVisible(visible);
}

void formMain::MovePointerToReloadButton() {
  QCursor::setPos(cmdOK_Reload_->mapToGlobal(cmdOK_Reload_->rect().center()));
}

bool formMain::IsPickerFocused() const {
  const QWidget* focus = focusWidget();
  return focus && (focus == DTP_[0] || focus == DTP_[1]);
}

void formMain::ReturnFocus() {
  if (!isActiveWindow() || QApplication::activePopupWidget() || focusWidget() == FocusGetter_ ||
      IsPickerFocused()) {
    return;
  }
  FocusGetter_->setFocus(Qt::OtherFocusReason);
}

void formMain::PopUpMenu() {
  if (formMnu_) formMnu_->PopUp(QCursor::pos());
}

void formMain::CloseWindows() {
  FormRetryAfterError_->hide();
  formSplash_->hide();
  formMapUpdating_->hide();
}

void formMain::EndApplication(int exitCode) {
  QCoreApplication::exit(exitCode);
}

std::int64_t formMain::Handle() const {
  return static_cast<std::int64_t>(const_cast<formMain*>(this)->winId());
}

PixelRect formMain::WorkArea() const {
  const QRect area = screen()->availableGeometry();
  return {area.x(), area.y(), area.width(), area.height()};
}

PixelRect formMain::Bounds() const {
  return {pos().x(), pos().y(), width(), height()};
}

void formMain::SetBounds(const PixelRect& bounds) {
  move(bounds.left, bounds.top);
  resize(std::max(bounds.width, kSmallestWidth), std::max(bounds.height, kSmallestHeight));
}

void formMain::Show() {
  show();
}
void formMain::Maximise() {
  setWindowState(windowState() | Qt::WindowMaximized);
}
bool formMain::IsMaximised() const {
  return isMaximized();
}
bool formMain::IsMinimised() const {
  return isMinimized();
}

void formMain::BringToForeground() {
  // Another program's window, or a dialog of ours, keeps the keyboard: raising alone does not take it.
  raise();
}

void formMain::Activate() {
  if (isMinimized()) setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
  activateWindow();
}

void formMain::Close() {
  close();
}

void formMain::resizeEvent(QResizeEvent*) {
  if (client_) client_->Resized();
}

void formMain::moveEvent(QMoveEvent*) {
  if (client_) client_->Moved();
}

void formMain::changeEvent(QEvent* event) {
  if (event->type() == QEvent::WindowStateChange && client_) client_->Resized();
  QWidget::changeEvent(event);
}

void formMain::closeEvent(QCloseEvent* event) {
  event->accept();
  if (client_) client_->Unload();
}

// The window sees keys before its controls, the map page among them.
bool formMain::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonPress && watched->isWidgetType() && IsPickerFocused() &&
      mapArea_->isAncestorOf(static_cast<QWidget*>(watched))) {
    FocusGetter_->setFocus(Qt::MouseFocusReason);  // a click on the map ends the editing of a date
  }
  if (event->type() == QEvent::FocusOut && watched == FocusGetter_) {
    QTimer::singleShot(0, this, [this] { client_->FocusLost(); });
  }
  if (event->type() == QEvent::KeyPress && watched->isWidgetType() && isActiveWindow()) {
    const auto* widget = static_cast<QWidget*>(watched);
    const auto key = KeyOfEvent(*static_cast<QKeyEvent*>(event));
    if (widget->window() == this && !IsPickerFocused() && key && client_->KeyDown(key->modifiers, key->key))
      return true;
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace pallomir
