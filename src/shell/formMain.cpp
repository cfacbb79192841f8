#include "shell/formMain.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QCursor>
#include <QFrame>
#include <QKeyEvent>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>
#include <utility>

#include "commands/key_of_event_widget.h"
#include "hotspots/formHotSpots_Edit.h"
#include "hotspots/formSecureHotSpots_Edit.h"
#include "map/map_view.h"
#include "platform/qt/qt_menu.h"
#include "platform/qt/window_manager.h"
#include "shell/client.h"
#include "timeline/picker_row_widget.h"
#include "timeline/timeline_info_widget.h"
#include "timeline/timeline_strip_widget.h"
#include "tracking/FormRetryAfterError.h"
#include "tracking/formMobileUnit_Edit.h"
#include "ui/accessible_widget.h"
#include "window/about_widget.h"
#include "window/caption_line_widget.h"
#include "window/capture_panel_widget.h"
#include "window/formMapUpdating.h"
#include "window/formSplash.h"
#include "window/help_overlays_widget.h"
#include "window/point_marker_widget.h"
#include "window/size_grips_widget.h"
#include "window/tab_order_widget.h"

namespace pallomir {
namespace {

// The page is told that it has 21 by 5 pixels less than the browser. Half of the 5, and of the 3 that are not
// the unused width, lie before it: then its middle is the one that marks over the map are reckoned from.
constexpr QPoint kPageInset(2, 3);

QString Text(const std::string& utf8) { return QString::fromStdString(utf8); }

PixelRect RectOf(const QRect& rect) { return {rect.x(), rect.y(), rect.width(), rect.height()}; }

WindowMode ModeOf(Qt::WindowStates states) {
  if (states.testFlag(Qt::WindowMinimized)) return WindowMode::kMinimised;
  if (states.testFlag(Qt::WindowFullScreen)) return WindowMode::kFullScreen;
  return states.testFlag(Qt::WindowMaximized) ? WindowMode::kMaximised : WindowMode::kNormal;
}

}  // namespace

formMain::formMain(QWidget* browser) : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint), WB_(browser) {
  SetAccessible(this, {.role = QAccessible::Window});
  setObjectName("formMain");
  setWindowTitle("Pallomir");
  setMinimumSize(kSmallestWindow);
  mapArea_ = new QWidget(this);
  SetAccessible(mapArea_, {.role = QAccessible::Pane});
  mapArea_->setAccessibleName("Map");
  WB_->setParent(mapArea_);
  WB_->setObjectName("WB");
  BuildCaptionLine();
  BuildTimelineFrame();
  FocusGetter_ = new QCheckBox(this);
  SetAccessible(FocusGetter_, {.role = QAccessible::ButtonMenu, .opensMenu = true});
  FocusGetter_->setObjectName("FocusGetter");
  FocusGetter_->setAccessibleName("Map keyboard");
  FocusGetter_->setGeometry(0, 0, 1, 1);
  picP_ = new CapturePanel(mapArea_);
  marker_ = std::make_unique<PointMarker>(mapArea_);
  infos_ = new PointInfos(mapArea_);
  frameTimelineInfo_ = new TimelineInfo(this);
  help_ = std::make_unique<HelpOverlays>(mapArea_);
  formSplash_ = new formSplash(this, VersionText(PALLOMIR_VERSION, ExecutableDate()));
  formMapUpdating_ = new formMapUpdating(this);
  FormRetryAfterError_ = new FormRetryAfterError(this);
  about_ = new AboutBox(this, "Pallomir", PALLOMIR_VERSION, ExecutableDate());
  pctSizer_ = new SizeGrips(this);
  OrderTabs();
}

// What the widgets tell while they are hidden reaches nobody: the client may have gone before.
formMain::~formMain() {
  client_ = nullptr;
  qApp->removeEventFilter(this);
  hide();
}

void formMain::BuildCaptionLine() {
  captionLine_ = new CaptionLine(this);
  pickers_ = new PickerRow(captionLine_);
  for (QWidget* control : pickers_->Controls()) captionLine_->AddControl(control);
}

void formMain::BuildTimelineFrame() {
  frameTimeLine_ = new QFrame(this);
  frameTimeLine_->setObjectName("frameTimeLine");
  strip_ = new TimelineStrip(frameTimeLine_);
  auto* inside = new QVBoxLayout(frameTimeLine_);
  inside->setContentsMargins(0, 0, 0, 0);
  inside->addWidget(strip_);
}

// As the eye reads: the caption line from left to right, the keys where their button is, the map, the
// timeline.
void formMain::OrderTabs() {
  const auto control = [this](const char* name) { return captionLine_->findChild<QWidget*>(name); };
  const auto [start, end, reload] = pickers_->Controls();
  SetTabOrder({control("lblMenu"), start, end, reload, control("picLamp"), control("pctHelp_1"),
               help_->Keyboard(), control("pctHelp_2"), control("pctButton_Minimize"),
               control("pctButton_Normal"), control("pctButton_Maximize"), control("pctButton_FullScreen"),
               control("pctButton_Exit"), formSplash_->findChild<QWidget*>("cmdSplashOK"), FocusGetter_, WB_,
               frameTimeLine_});
}

void formMain::Attach(Client& client, QuestionQueue& questions) {
  client_ = &client;
  questions_ = &questions;
  formMnu_ = std::make_unique<QtMenu>(client.Menus(), Command::kPopup, this);
  ConnectCaptionLine();
  connect(FocusGetter_, &QCheckBox::clicked, this, [this] { client_->MenuButtonClicked(); });
  ConnectPickers();
  strip_->dragFinished = ToClient(&Client::TimelineDragged);
  strip_->hovered = ToClient(&Client::TimelineHovered);
  strip_->left = ToClient(&Client::TimelineLeft);
  strip_->layoutClicked = ToClient(&Client::Timeline_Resize);
  picP_->drawn = [this](QPoint a, QPoint b) { client_->RubberBandDrawn({a.x(), a.y()}, {b.x(), b.y()}); };
  const auto toFeed = [this](void (DataFeed::*method)()) {
    return [this, method] {
      if (client_) (client_->Feed().*method)();
    };
  };
  FormRetryAfterError_->retryNow = toFeed(&DataFeed::RetryNow);
  FormRetryAfterError_->stopRetrying = toFeed(&DataFeed::StopRetrying);
  FormRetryAfterError_->quit = toFeed(&DataFeed::EndSession);
  FormRetryAfterError_->openPage = [this] { client_->MenuChosen(client_->Menus().At(Command::kFaqs)); };
  qApp->installEventFilter(this);
}

void formMain::ConnectCaptionLine() {
  captionLine_->menu = ToClient(&Client::MenuButtonClicked);
  captionLine_->minimise = ToClient(&Client::MinimiseClicked);
  captionLine_->normal = ToClient(&Client::NormalClicked);
  captionLine_->maximise = ToClient(&Client::MaximiseClicked);
  captionLine_->fullScreen = ToClient(&Client::FullScreenClicked);
  captionLine_->exit = [this] { close(); };
  captionLine_->doubleClicked = ToClient(&Client::CaptionDoubleClicked);
  captionLine_->showKeyboard = [this] { help_->ShowKeyboard(); };
  captionLine_->readKeyboard = [this] { help_->ReadKeyboard(); };
  captionLine_->showKeyList = [this] { help_->ShowKeyList(); };
  captionLine_->pointerMoved = ToClient(&Client::PointerOverCaption);
  captionLine_->pointerLeft = ToClient(&Client::HidePointInfos);
}

void formMain::ConnectPickers() {
  pickers_->gotFocus = ToClient(&Client::PickerGotFocus);
  pickers_->lostFocus = ToClient(&Client::PickerLostFocus);
  pickers_->changed = ToClient(&Client::PickerChanged);
  pickers_->droppedDown = ToClient(&Client::PickerDroppedDown);
  pickers_->closedUp = ToClient(&Client::PickerClosedUp);
  pickers_->reload = [this] {
    LeaveChrome();  // ends the editing, which takes over what was typed
    client_->ReloadClicked();
  };
}

void formMain::ShowLamp(const LampMessage& lamp) {
  constexpr LampState kStates[] = {LampState::kQuiet, LampState::kGreen, LampState::kAmber, LampState::kRed};
  captionLine_->SetLamp(kStates[static_cast<int>(lamp.colour)], Text(lamp.tip), Text(lamp.word));
}

void formMain::ShowDemoMode(bool on) { captionLine_->SetDemoMode(on); }

void formMain::SetCaption(const std::string& text) { captionLine_->SetCaption(Text(text)); }
void formMain::ShowCaption(bool visible) { captionLine_->SetCaptionVisible(visible); }

void formMain::LayOut() {
  strip_->setFixedHeight(strip_->HeightIn(height()));
  const int frameHeight = frameTimeLine_->isHidden() ? 0 : strip_->height();
  const int captionHeight = captionLine_->sizeHint().height();
  const int mapHeight = std::max(0, height() - frameHeight - captionHeight);
  mapArea_->setGeometry(0, captionHeight, width(), mapHeight);
  WB_->setGeometry(kPageInset.x(), kPageInset.y(), width() + kUnusedBrowserWidth, mapHeight);
  frameTimeLine_->setGeometry(0, captionHeight + mapHeight, width(), frameHeight);
  captionLine_->setGeometry(0, 0, width(), captionHeight);
  pctSizer_->Raise();
}

PixelSize formMain::BrowserSize() const { return {WB_->width(), WB_->height()}; }

bool formMain::IsTimelineVisible() const { return !frameTimeLine_->isHidden(); }
void formMain::ShowTimeline(bool visible) { frameTimeLine_->setVisible(visible); }
void formMain::SetMenuLabel(const std::string& text) { captionLine_->SetMenuText(Text(text)); }
void formMain::LayOutTimeline(std::size_t rows) { strip_->LayOutRows(static_cast<int>(rows)); }
int formMain::TimelineWidth() const { return strip_->ScaleWidth(); }
void formMain::ShowTimelinePicture(const TimelinePicture& picture) { strip_->Redraw(picture); }

void formMain::ShowTimelineInfo(const std::string& text) {
  strip_->TellHover(Text(text));
  frameTimelineInfo_->ShowText(Text(text), strip_->mapTo(this, strip_->PointerPosition()),
                               mapArea_->geometry());
}

void formMain::HideTimelineInfo() { frameTimelineInfo_->hide(); }

void formMain::ShowWindowMode(WindowMode mode) {
  captionLine_->SetMode(mode);
  pctSizer_->SetEnabled(mode == WindowMode::kNormal);
}

template <class Editor, class List>
void formMain::OpenEditor(QPointer<Editor>& editor, const List& list, void (Client::*applied)(const List&)) {
  if (!editor) {
    editor = new Editor(this, list, *questions_);
    editor->apply = [this, applied](const List& edited) { (client_->*applied)(edited); };
    editor->show();
  }
  editor->raise();
  editor->activateWindow();
}

std::vector<QWidget*> formMain::OpenEditors() const {
  std::vector<QWidget*> open;
  for (QWidget* editor :
       std::initializer_list<QWidget*>{formMobileUnit_Edit_, formHotSpots_Edit_, formSecureHotSpots_Edit_})
    if (editor) open.push_back(editor);
  return open;
}

void formMain::EditUnits(const std::vector<MobileUnit>& units) {
  OpenEditor(formMobileUnit_Edit_, units, &Client::UnitsApplied);
}

void formMain::ShowUnitFlags(const std::vector<MobileUnit>& units) {
  if (formMobileUnit_Edit_) formMobileUnit_Edit_->ShowFlags(units);
}

void formMain::EditHotspots(const std::vector<std::string>& ssids) {
  OpenEditor(formHotSpots_Edit_, ssids, &Client::HotspotsApplied);
}

void formMain::EditSecureHotspots(const std::vector<SecureHotspot>& hotspots) {
  OpenEditor(formSecureHotSpots_Edit_, hotspots, &Client::SecureHotspotsApplied);
}

void formMain::ShowAbout() { about_->ShowBox(); }
void formMain::ShowSplash() { formSplash_->ShowInPlace(); }
void formMain::TickStatus(int line) { formSplash_->Tick(line); }
void formMain::HideSplash() { formSplash_->hide(); }
void formMain::ShowMapUpdating() { formMapUpdating_->ShowInPlace(); }
void formMain::HideMapUpdating() { formMapUpdating_->hide(); }

void formMain::ShowRetry(const std::string& message) {
  FormRetryAfterError_->SetMessage(Text(message));
  // It takes the keyboard only from the main window, not from another program's or from a dialog of ours.
  FormRetryAfterError_->ShowOver(QApplication::activeWindow() == this);
}

void formMain::SetRetryProgress(int bar, const std::string& label) {
  FormRetryAfterError_->SetProgress(bar, Text(label));
}

void formMain::HideRetry() { FormRetryAfterError_->hide(); }

void formMain::ShowPointMarker(ViewPoint at) { marker_->ShowAt({at.x, at.y}); }
void formMain::ShowPointInfos(const std::vector<std::string>& texts) {
  QStringList lines;
  for (const std::string& text : texts) lines += Text(text);
  infos_->ShowTexts(lines);
  help_->Raise();  // what is being read stays on top
}
void formMain::HidePointInfos() { infos_->hide(); }
void formMain::HidePointMarker() { marker_->Hide(); }
void formMain::ShowCapturePanel() { picP_->Poll(); }

void formMain::PointerOverMap(ViewPoint at) { help_->PointerOverMap({at.x, at.y}); }

void formMain::ShowPicker(int i, Millis value, const std::string& format, bool visible) {
  pickers_->ShowPicker(i, value, Text(format), visible);
}

void formMain::ShowReloadButton(bool visible) { pickers_->ShowReload(visible); }
void formMain::MovePointerToReloadButton() { pickers_->MovePointerToReload(); }

void formMain::ReturnFocus() {
  if (!isActiveWindow() || QApplication::activePopupWidget() || focusWidget() == FocusGetter_ ||
      pickers_->HasPickerFocus()) {
    return;
  }
  FocusGetter_->setFocus(Qt::OtherFocusReason);
}

void formMain::PopUpMenu(MenuPlace place) {
  if (!formMnu_) return;
  // In full screen the button may be hidden: its corner of the window is meant then too.
  const auto* button = captionLine_->findChild<QWidget*>("lblMenu");
  formMnu_->PopUp(place == MenuPlace::kAtPointer ? QCursor::pos()
                  : button->isVisible()          ? button->mapToGlobal(QPoint(0, button->height()))
                                                 : mapToGlobal(QPoint(0, 0)));
}

void formMain::CloseWindows() {
  FormRetryAfterError_->hide();
  for (QWidget* editor : OpenEditors()) editor->close();
  about_->hide();
  formSplash_->hide();
  formMapUpdating_->hide();
}

void formMain::EndApplication(int exitCode) { QCoreApplication::exit(exitCode); }

std::int64_t formMain::Handle() const {
  return static_cast<std::int64_t>(const_cast<formMain*>(this)->winId());
}
PixelRect formMain::WorkArea() const { return RectOf(screen()->availableGeometry()); }
PixelRect formMain::Screen() const { return RectOf(screen()->geometry()); }
bool formMain::HasWindowManager() const { return WindowManagerRuns(); }
// The widget itself learns of a new size and a new place one after the other.
PixelRect formMain::Bounds() const {
  return RectOf(windowHandle() ? windowHandle()->geometry() : geometry());
}
bool formMain::IsMaximisedOneWay() const {
  return windowHandle() && pallomir::IsMaximisedOneWay(*windowHandle());
}

bool formMain::KnowsPosition() const { return !QGuiApplication::platformName().startsWith("wayland"); }

std::vector<PixelRect> formMain::Screens() const {
  std::vector<PixelRect> screens;
  for (const QScreen* each : QGuiApplication::screens()) screens.push_back(RectOf(each->geometry()));
  return screens;
}

void formMain::SetBounds(const PixelRect& bounds) {
  const QSize size = QSize(bounds.width, bounds.height).expandedTo(minimumSize());
  if (KnowsPosition()) {
    setGeometry(QRect(QPoint(bounds.left, bounds.top), size));
  } else {
    resize(size);
  }
}

void formMain::SetState(WindowMode state) {
  switch (state) {
    case WindowMode::kNormal:
      setWindowState(Qt::WindowNoState);
      break;
    case WindowMode::kMinimised:
      setWindowState(windowState() | Qt::WindowMinimized);
      break;
    case WindowMode::kMaximised:
      setWindowState(Qt::WindowMaximized);
      break;
    case WindowMode::kFullScreen:
      setWindowState(Qt::WindowFullScreen);
      break;
  }
}

// By the window's own handle: the widget's flag would hide the window for a moment.
void formMain::SetTopmost(bool topmost) {
  if (windowHandle()) windowHandle()->setFlag(Qt::WindowStaysOnTopHint, topmost);
}

void formMain::Show() {
  // A window manager takes a state only from a window that it knows: when it has been seen for the first
  // time.
  stateWhenSeen_ = windowState();
  setWindowState(Qt::WindowNoState);
  show();
}

void formMain::FirstSeen() {
  if (stateWhenSeen_) setWindowState(stateWhenSeen_);
  // Without a window manager nobody else gives it the keyboard.
  if (!HasWindowManager()) QTimer::singleShot(0, this, [this] { activateWindow(); });
}

void formMain::BringToForeground() {
  // Another program's window, or a dialog of ours, keeps the keyboard: raising alone does not take it.
  raise();
  for (QWidget* editor : OpenEditors()) editor->raise();
  if (FormRetryAfterError_->isVisible()) FormRetryAfterError_->raise();
  if (!QApplication::activeWindow() && KeyboardIsFree()) activateWindow();
}

void formMain::Activate() {
  if (isMinimized()) setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
  activateWindow();
}

void formMain::Close() { close(); }

void formMain::resizeEvent(QResizeEvent*) {
  if (client_) client_->Resized();
}

void formMain::moveEvent(QMoveEvent*) {
  if (client_) client_->Moved();
}

void formMain::changeEvent(QEvent* event) {
  if (event->type() == QEvent::WindowStateChange && client_ && HasWindowManager()) {
    const WindowMode mode = ModeOf(windowState());
    const bool wasMinimised =
        static_cast<QWindowStateChangeEvent*>(event)->oldState().testFlag(Qt::WindowMinimized);
    if (wasMinimised && mode != WindowMode::kMinimised) client_->MinimiseEnded();
    client_->WindowStateGiven(mode);
  }
  if (event->type() == QEvent::ActivationChange && client_) {
    if (isActiveWindow()) {
      client_->MinimiseEnded();
    } else {
      client_->HidePointInfos();
    }
  }
  QWidget::changeEvent(event);
}

void formMain::closeEvent(QCloseEvent* event) {
  event->accept();
  if (client_) client_->Unload();
}

// The window sees keys before its controls, the map page among them.
bool formMain::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Expose && watched == windowHandle() && !std::exchange(seen_, true))
    FirstSeen();
  if (event->type() == QEvent::Expose && watched == windowHandle() && windowHandle()->isExposed()) {
    client_->MinimiseEnded();
  }
  const bool isOfInterest = event->type() == QEvent::KeyPress || event->type() == QEvent::MouseButtonPress ||
                            event->type() == QEvent::FocusOut || event->type() == QEvent::Leave;
  if (!isOfInterest || !watched->isWidgetType()) return QWidget::eventFilter(watched, event);
  auto& widget = *static_cast<QWidget*>(watched);
  if (event->type() == QEvent::KeyPress && FilterKey(widget, *static_cast<QKeyEvent*>(event))) return true;
  if (event->type() == QEvent::MouseButtonPress && widget.window() == this) FilterMousePress(widget);
  if (event->type() == QEvent::Leave && watched == mapArea_) client_->HidePointInfos();
  if (event->type() == QEvent::FocusOut && watched == FocusGetter_) {
    QTimer::singleShot(0, this, ToClient(&Client::FocusLost));
  }
  return QWidget::eventFilter(watched, event);
}

bool formMain::FilterKey(QWidget& widget, const QKeyEvent& event) {
  if (!isActiveWindow() || widget.window() != this) return false;
  switch (event.key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
      client_->HoldFocusOff(true);
      return false;
    case Qt::Key_F6:
      client_->HoldFocusOff(true);
      if (!pickers_->FocusStart())
        captionLine_->findChild<QWidget*>("lblMenu")->setFocus(Qt::ShortcutFocusReason);
      return true;
    case Qt::Key_F10:
      if (event.modifiers() != Qt::NoModifier) return false;
      client_->HoldFocusOff(true);
      client_->MenuButtonClicked();
      return true;
    case Qt::Key_Escape:
      help_->Hide();
      formSplash_->hide();
      LeaveChrome();
      return false;
    default:
      break;
  }
  if (pickers_->HasPickerFocus()) return false;
  const auto key = KeyOfEvent(event);
  if (!key || !client_->KeyDown(key->modifiers, key->key)) return false;
  LeaveChrome();
  return true;
}

// A click outside the caption line ends the editing of a date and gives the keyboard back.
void formMain::FilterMousePress(QWidget& widget) {
  if (!isActiveWindow() && !HasWindowManager()) activateWindow();
  if (&widget != captionLine_ && !captionLine_->isAncestorOf(&widget)) LeaveChrome();
}

void formMain::LeaveChrome() {
  client_->HoldFocusOff(false);
  FocusGetter_->setFocus(Qt::OtherFocusReason);
}

}  // namespace pallomir
