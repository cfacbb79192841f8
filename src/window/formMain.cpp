#include "window/formMain.h"

#include <QApplication>
#include <QCheckBox>
#include <utility>

#include "commands/command.h"
#include "map/map_view.h"
#include "platform/qt/qt_menu.h"
#include "timeline/picker_row_widget.h"
#include "timeline/timeline_strip_widget.h"
#include "tracking/FormRetryAfterError.h"
#include "ui/accessible_widget.h"
#include "window/boxes_widget.h"
#include "window/caption_line_widget.h"
#include "window/formSplash.h"
#include "window/map_overlays_widget.h"
#include "window/size_grips_widget.h"
#include "window/tab_order_widget.h"
#include "window/timeline_frame_widget.h"

namespace pallomir {

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
  captionLine_ = new CaptionLine(this);
  pickers_ = new PickerRow(captionLine_);
  for (QWidget* control : pickers_->Controls()) captionLine_->AddControl(control);
  frameTimeLine_ = new TimelineFrame(this, mapArea_);
  FocusGetter_ = new QCheckBox(this);
  SetAccessible(FocusGetter_, {.role = QAccessible::ButtonMenu, .opensMenu = true});
  FocusGetter_->setObjectName("FocusGetter");
  FocusGetter_->setAccessibleName("Map keyboard");
  FocusGetter_->setGeometry(0, 0, 1, 1);
  overlays_ = std::make_unique<MapOverlays>(mapArea_);
  boxes_ = std::make_unique<WindowBoxes>(this);
  FormRetryAfterError_ = new FormRetryAfterError(this);
  pctSizer_ = new SizeGrips(this);
  OrderTabs();
}

// What the widgets tell while they are hidden reaches nobody: the rooms may have gone before.
formMain::~formMain() {
  rooms_.reset();
  qApp->removeEventFilter(this);
  hide();
}

void formMain::AddState(QWidget* control) { captionLine_->AddState(control); }

// As the eye reads: the caption line from left to right, the keys where their button is, the map, the
// timeline.
void formMain::OrderTabs() {
  const auto control = [this](const char* name) { return captionLine_->findChild<QWidget*>(name); };
  const auto [start, end, reload] = pickers_->Controls();
  SetTabOrder({control("lblMenu"), start, end, reload, control("picLamp"), control("pctHelp_1"),
               overlays_->Help().Keyboard(), control("pctHelp_2"), control("pctButton_Minimize"),
               control("pctButton_Normal"), control("pctButton_Maximize"), control("pctButton_FullScreen"),
               control("pctButton_Exit"), boxes_->Splash().findChild<QWidget*>("cmdSplashOK"), FocusGetter_,
               WB_, frameTimeLine_});
}

void formMain::Attach(MainWindowRooms rooms) {
  rooms_.emplace(std::move(rooms));
  formMnu_ = std::make_unique<QtMenu>(rooms_->menus, Command::kPopup, this);
  ConnectCaptionLine();
  connect(FocusGetter_, &QCheckBox::clicked, this, [this] { rooms_->menuButton(); });
  ConnectTime();
  ConnectDialogs();
  overlays_->Panel().drawn = [this](QPoint a, QPoint b) {
    rooms_->marks.RubberBandDrawn({a.x(), a.y()}, {b.x(), b.y()});
  };
  qApp->installEventFilter(this);
}

void formMain::ConnectCaptionLine() {
  captionLine_->menu = Told([](auto& rooms) { rooms.menuButton(); });
  captionLine_->minimise = Told([](auto& rooms) { rooms.frame.Minimise(); });
  captionLine_->normal = Told([](auto& rooms) { rooms.frame.Normal(); });
  captionLine_->maximise = Told([](auto& rooms) { rooms.frame.Maximise(); });
  captionLine_->fullScreen = Told([](auto& rooms) { rooms.frame.FullScreen(); });
  captionLine_->exit = [this] { close(); };
  captionLine_->doubleClicked = Told([](auto& rooms) { rooms.frame.ToggleMaximised(); });
  captionLine_->showKeyboard = [this] { overlays_->Help().ShowKeyboard(); };
  captionLine_->readKeyboard = [this] { overlays_->Help().ReadKeyboard(); };
  captionLine_->showKeyList = [this] { overlays_->Help().ShowKeyList(); };
  captionLine_->pointerMoved = Told([](auto& rooms, int x) { rooms.marks.PointerOverCaption(x); });
  captionLine_->pointerLeft = Told([](auto& rooms) { rooms.marks.HidePointInfos(); });
}

void formMain::ConnectTime() {
  pickers_->gotFocus = Told([](auto& rooms, int i) { rooms.pickers.GotFocus(i); });
  pickers_->lostFocus = Told([](auto& rooms, int i) { rooms.pickers.LostFocus(i); });
  pickers_->changed = Told([](auto& rooms, int i, Millis value) { rooms.pickers.Changed(i, value); });
  pickers_->droppedDown = Told([](auto& rooms, int i) { rooms.pickers.DroppedDown(i); });
  pickers_->closedUp = Told([](auto& rooms, int i) { rooms.pickers.ClosedUp(i); });
  pickers_->reload = [this] {
    LeaveChrome();  // ends the editing, which takes over what was typed
    rooms_->pickers.ReloadClicked();
  };
  TimelineStrip& strip = frameTimeLine_->Strip();
  strip.dragFinished = Told([](auto& rooms, double from, double to) { rooms.pickers.ZoomTo(from, to); });
  strip.hovered = Told([](auto& rooms, int row, int column) { rooms.timeline.Hovered(row, column); });
  strip.left = Told([](auto& rooms) { rooms.timeline.HideInfo(); });
  strip.layoutClicked = Told([](auto& rooms) { rooms.timeline.Timeline_Resize(); });
}

void formMain::ConnectDialogs() {
  FormRetryAfterError_->retryNow = Told([](auto& rooms) { rooms.feed.RetryNow(); });
  FormRetryAfterError_->stopRetrying = Told([](auto& rooms) { rooms.feed.StopRetrying(); });
  FormRetryAfterError_->quit = Told([](auto& rooms) { rooms.feed.EndSession(); });
  FormRetryAfterError_->openPage =
      Told([](auto& rooms) { rooms.menus.chosen(rooms.menus.At(Command::kFaqs)); });
  editors_.SetQuestions(rooms_->questions);
  editors_.unitsApplied = Told([](auto& rooms, const auto& units) { rooms.units.Apply(units); });
  editors_.hotspotsApplied = Told([](auto& rooms, const auto& ssids) { rooms.hotspots.Apply(ssids); });
  editors_.secureHotspotsApplied =
      Told([](auto& rooms, const auto& hotspots) { rooms.hotspots.ApplySecure(hotspots); });
  boxes_->closeOthers = [this] {
    FormRetryAfterError_->hide();
    for (QWidget* editor : editors_.Open()) editor->close();
  };
}

void formMain::LayOut() {
  const int frameHeight = frameTimeLine_->FitHeight(height());
  const int captionHeight = captionLine_->sizeHint().height();
  const int mapHeight = std::max(0, height() - frameHeight - captionHeight);
  mapArea_->setGeometry(0, captionHeight, width(), mapHeight);
  WB_->setGeometry(0, 0, width() + kUnusedBrowserWidth, mapHeight);
  frameTimeLine_->setGeometry(0, captionHeight + mapHeight, width(), frameHeight);
  captionLine_->setGeometry(0, 0, width(), captionHeight);
  pctSizer_->Raise();
}

BoxesView& formMain::Boxes() { return *boxes_; }
TimelineView& formMain::Timeline() { return *frameTimeLine_; }
MarksView& formMain::Marks() { return *overlays_; }

PixelSize formMain::BrowserSize() const { return {WB_->width(), WB_->height()}; }

void formMain::ShowWindowMode(WindowMode mode) {
  captionLine_->SetMode(mode);
  pctSizer_->SetEnabled(mode == WindowMode::kNormal);
}

}  // namespace pallomir
