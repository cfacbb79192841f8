#include <gmock/gmock.h>

#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "commands/hot_keys.h"
#include "commands/key_list_widget.h"
#include "commands/key_of_event_widget.h"
#include "commands/keyboard_widget.h"
#include "platform/wait.h"
#include "window/about_widget.h"
#include "window/caption_line_widget.h"
#include "window/caption_text_widget.h"
#include "window/icon_button_widget.h"
#include "window/point_marker_widget.h"
#include "window/size_grips_widget.h"
#include "window/top_level_widget.h"

// The parts of the window's frame and the help over the map, each alone.

namespace pallomir {
namespace {

using testing::ElementsAre;

void MoveTo(QWidget* widget, const QPoint& place) {
  const QPointF local = place;
  QMouseEvent move(QEvent::MouseMove, local, widget->mapToGlobal(local), Qt::NoButton, Qt::LeftButton, {});
  QApplication::sendEvent(widget, &move);
}

void Enter(QWidget* widget) {
  const QPointF middle = widget->rect().center();
  QEnterEvent event(middle, middle, widget->mapToGlobal(middle));
  QApplication::sendEvent(widget, &event);
}

class ChromeTest : public testing::Test {
 protected:
  ChromeTest() {
    window_.setWindowFlag(Qt::FramelessWindowHint);
    window_.setGeometry(100, 100, 900, 600);
    window_.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window_));
  }

  template <class Widget = QWidget>
  Widget* Find(const QString& name) {
    auto* widget = window_.findChild<Widget*>(name);
    EXPECT_TRUE(widget) << name.toStdString();
    return widget;
  }

  QWidget window_;
};

struct KeyCase {
  const char* name;
  int key;
  Qt::KeyboardModifiers held;
  quint32 scanCode;
  quint32 nativeModifiers;
  std::string expected;  // mask and character; empty for none
};

TEST(KeyOfEvent, TellsKeysByPlaceAndLetter) {
  const KeyCase cases[] = {
      {"letter", Qt::Key_R, {}, 27, 0, "0R"},
      {"letter elsewhere on this layout", Qt::Key_A, {}, 24, 0, "0A"},
      {"Cyrillic letter", 0x041A, {}, 27, 0, "0R"},
      {"Greek letter under Ctrl", 0x03A4, Qt::ControlModifier, 28, 0, "2T"},
      {"comma of a Latin layout on a US M", Qt::Key_Comma, {}, 58, 0, ""},
      {"accented letter of a Latin layout", 0x0160, {}, 40, 0, ""},
      {"digit with Shift", Qt::Key_Exclam, Qt::ShiftModifier, 10, 0, "11"},
      {"digit of a layout with letters there", Qt::Key_Eacute, {}, 11, 0, "02"},
      {"last digit", Qt::Key_0, {}, 19, 0, "00"},
      {"key behind the digits", Qt::Key_Minus, {}, 20, 0, ""},
      {"bracket of another layout", Qt::Key_Udiaeresis, {}, 34, 0, "0["},
      {"Cyrillic letter on a bracket", 0x042A, {}, 35, 0, "0]"},
      {"Latin letter on a bracket", Qt::Key_Z, Qt::ControlModifier, 35, 0, "2Z"},
      {"digit without a place", Qt::Key_Ampersand, Qt::ShiftModifier, 0, 0, "17"},
      {"bracket without a place", Qt::Key_BracketLeft, {}, 0, 0, "0["},
      {"Alt", Qt::Key_A, Qt::AltModifier, 38, 0, "4A"},
      {"AltGr", Qt::Key_BracketLeft, {}, 14, 0x80, "45"},
      {"Super", Qt::Key_A, Qt::MetaModifier, 38, 0, ""},
      {"keypad", Qt::Key_1, Qt::KeypadModifier, 87, 0, ""},
      {"function key", Qt::Key_F1, {}, 67, 0, ""},
      {"Tab", Qt::Key_Tab, {}, 23, 0, ""},
  };
  for (const KeyCase& row : cases) {
    const QKeyEvent event(QEvent::KeyPress, row.key, row.held, row.scanCode, 0, row.nativeModifiers);
    const auto key = KeyOfEvent(event);
    EXPECT_EQ(key ? std::to_string(key->modifiers) + key->key : "", row.expected) << row.name;
  }
  EXPECT_FALSE(KeyOfEvent(QKeyEvent(QEvent::KeyPress, Qt::Key_A, {}, QString(), true))) << "repeat";
  EXPECT_FALSE(KeyOfEvent(QKeyEvent(QEvent::KeyPress, Qt::Key_Return, {}, QString(), true))) << "repeat";
  EXPECT_TRUE(KeyOfEvent(QKeyEvent(QEvent::KeyPress, Qt::Key_Left, {}, QString(), true))) << "goes on";
}

TEST_F(ChromeTest, TheHelpsAreShownWholeInALowWindow) {
  auto* picture = new KeyboardPicture(&window_);
  auto* list = new KeyListPicture(&window_);
  const QPoint corner(0, 40);
  picture->ShowOverlay(corner);
  list->ShowOverlay(corner);
  window_.setFixedHeight(list->height() + 10);
  list->ShowOverlay(corner);
  EXPECT_EQ(list->pos(), QPoint(5, 10));
  const int oneLine = picture->height();
  window_.setFixedHeight(oneLine + 45);
  for (QLabel* key : picture->findChildren<QLabel*>())
    if (key->text() == "1") Enter(key);
  EXPECT_GT(picture->height(), oneLine);
  EXPECT_EQ(picture->y(), std::max(0, window_.height() - picture->height()));
}

TEST_F(ChromeTest, TheKeyboardPictureTellsOfTheKeyUnderThePointerAndIsAsHighAsThatNeeds) {
  auto* picture = new KeyboardPicture(&window_);
  picture->ShowOverlay();
  EXPECT_FALSE(window_.focusWidget());
  auto* table = Find<QLabel>("lblTable");
  const auto captions = KeyCaptions();
  QRegion taken;
  const QLabel* before = nullptr;
  const auto colour = [](const QLabel* key) { return key->palette().color(key->backgroundRole()); };
  for (std::size_t i = 0; i < captions.size(); ++i) {
    auto* key = Find<QLabel>(QString("lblKey(%1)").arg(i));
    EXPECT_FALSE(taken.intersects(key->geometry())) << captions[i];
    taken += key->geometry();
    const QColor plain = colour(key);
    Enter(key);
    EXPECT_NE(colour(key), plain);
    EXPECT_TRUE(!before || colour(before) == plain) << captions[i];
    before = key;
    EXPECT_EQ(table->text().toStdString(),
              QString::fromStdString(std::string(KeyDescription(captions[i]))).remove('\r').toStdString());
    EXPECT_GE(table->height(), table->heightForWidth(table->width()));
    EXPECT_EQ(picture->height(), table->y() + table->height() + 10);
  }
}

TEST_F(ChromeTest, TheTextsOfManyUnitsStandInRowsAndSayHowManyAreMissing) {
  auto* infos = new PointInfos(&window_);
  const auto shown = [&] {
    std::vector<const QLabel*> labels;
    for (const auto* label : infos->findChildren<QLabel*>())
      if (label->isVisible()) labels.push_back(label);
    return labels;
  };
  QStringList texts;
  for (int k = 1; k <= 9; ++k)
    texts += QString("%1: Demo Driver\n11/16/26 03:04:05 PM\n60.4 mph\n12.35 mi").arg(k);
  infos->ShowTexts(texts);
  ASSERT_EQ(shown().size(), 9u);
  for (const QLabel* label : shown()) {
    EXPECT_GE(label->width(), label->sizeHint().width()) << "whole";
    EXPECT_TRUE(window_.rect().contains({label->mapTo(&window_, QPoint(0, 0)), label->size()}));
  }
  for (int k = 0; k < 100; ++k) texts += texts[0];
  infos->ShowTexts(texts);
  const auto labels = shown();
  EXPECT_EQ(labels.back()->text(), QString("and %1 more").arg(109 - (labels.size() - 1)));
}

TEST_F(ChromeTest, EachButtonOfTheCaptionLineCallsItsOwn) {
  auto* line = new CaptionLine(&window_);
  std::vector<std::string> called;
  const auto record = [&](const char* what) { return [&called, what] { called.emplace_back(what); }; };
  line->menu = record("menu");
  line->minimise = record("minimise");
  line->normal = record("normal");
  line->maximise = record("maximise");
  line->fullScreen = record("full screen");
  line->exit = record("exit");
  line->showKeyboard = record("keyboard");
  line->showKeyList = record("list");
  line->resize(900, line->sizeHint().height());
  line->show();
  const std::pair<const char*, const char*> buttons[] = {
      {"lblMenu", "menu"},
      {"pctHelp_1", "keyboard"},
      {"pctHelp_2", "list"},
      {"pctButton_Normal", "normal"},
      {"pctButton_Maximize", "maximise"},
      {"pctButton_Minimize", "minimise"},
      {"pctButton_Exit", "exit"},
      {"pctButton_FullScreen", "full screen"},
  };
  for (const auto& [name, expected] : buttons) {
    auto* button = Find<QAbstractButton>(name);
    called.clear();
    button->click();
    EXPECT_THAT(called, ElementsAre(expected));
    EXPECT_EQ(button->focusPolicy(), Qt::TabFocus) << name << ": a click must leave the keyboard to the map";
    EXPECT_FALSE((button->accessibleName() + button->text()).isEmpty()) << name;
  }
  called.clear();
  QTest::keyClick(Find("pctButton_Exit"), Qt::Key_Return);
  QTest::keyClick(Find("pctHelp_2"), Qt::Key_Space);
  Enter(Find("pctHelp_1"));
  EXPECT_THAT(called, ElementsAre("exit", "list", "keyboard"));
  line->SetMode(WindowMode::kMaximised);
  Find<QAbstractButton>("pctButton_FullScreen")->click();
  EXPECT_TRUE(Find<QAbstractButton>("pctButton_Maximize")->isChecked());
  EXPECT_FALSE(Find<QAbstractButton>("pctButton_FullScreen")->isChecked()) << "the mode has not changed";
}

TEST_F(ChromeTest, InTheSmallestWindowAllButtonsStayWholeAndInside) {
  auto* line = new CaptionLine(&window_);
  line->SetMenuText("Exit to Map");
  for (const char* text : {"Start of the time window, in its long form", "End of the same", "Reload"})
    line->AddControl(new QPushButton(text));
  line->SetDemoMode(true);
  line->SetLamp(LampState::kRed, "What happened", "Closed by the server: press R");
  line->resize(kSmallestWindow.width(), line->sizeHint().height());
  line->show();
  for (const auto* button : line->findChildren<IconButton*>()) {
    EXPECT_TRUE(line->rect().contains(button->geometry())) << button->objectName().toStdString();
    EXPECT_EQ(button->size(), button->sizeHint());
  }
}

TEST_F(ChromeTest, StatesStayWhereTheyAreWhateverTheLampSaysAndTabReadsThemFromTheLeft) {
  auto* line = new CaptionLine(&window_);
  line->resize(900, 32);
  line->show();
  for (const char* name : {"mute", "bell"}) line->AddState(new IconButton(line, name, "bell", name));
  const auto placesAfter = [&](const QString& word) {
    line->SetLamp(LampState::kAmber, "", word);
    LetPass(1);
    return std::pair(Find("bell")->x(), Find("mute")->x());
  };
  const auto places = placesAfter("");
  EXPECT_LT(places.first, places.second) << "what comes and goes stands before what stays";
  EXPECT_EQ(placesAfter("Not connected: press R"), places);
  EXPECT_LT(Find("lblLamp")->x(), places.first);
  Find("bell")->setFocus();
  for (const char* next : {"mute", "picLamp"}) {
    QTest::keyClick(window_.focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(window_.focusWidget()->objectName(), next);
  }
}

TEST_F(ChromeTest, WithoutRoomTheTitleKeepsItsFiguresAndTheLampTheKey) {
  auto* line = new CaptionLine(&window_);
  line->show();
  line->SetDemoMode(true);
  auto* title = Find<CaptionText>("txtCaption");
  auto* word = Find<QLabel>("lblLamp");
  const QString whole = "Pallomir 1 02:00:00  27011 Data Points";
  line->SetCaption(whole);
  line->SetLamp(LampState::kRed, "What happened", "Not connected: press R");
  const int figures = title->fontMetrics().horizontalAdvance("1 02:00:00  27011");
  line->resize(900, 32);
  LetPass(1);
  const int others = 900 - title->width() - word->width();  // what the rest of the line takes
  const int wholeWord = word->width();
  const struct {
    int room;  // for both
    QString title, word;
  } cases[] = {
      {500, whole, "Not connected: press R"},
      {figures + wholeWord, "1 02:00:00  27011", "Not connected: press R"},
      {figures + wholeWord - 1, "1 02:00:00  27011 Data Points", "Press R"},
  };
  for (const auto& row : cases) {
    line->resize(others + row.room, 32);
    LetPass(1);
    EXPECT_EQ(title->Shown(), row.title) << row.room;
    EXPECT_EQ(word->text(), row.word) << row.room;
    EXPECT_EQ(title->text(), whole);
    EXPECT_EQ(title->toolTip(), row.title == whole ? "" : whole);
  }
  EXPECT_GE(Find("lblDemo")->width(), Find("lblDemo")->sizeHint().width());
  line->SetLamp(LampState::kGreen, "Connected", "");
  EXPECT_FALSE(word->isVisible());
}

TEST_F(ChromeTest, TheWindowFollowsTheCaptionFromTheDragDistanceOn) {
  auto* line = new CaptionLine(&window_);
  line->resize(900, 32);
  line->show();
  std::vector<int> moves;
  int doubleClicks = 0;
  line->doubleClicked = [&] { ++doubleClicks; };
  line->pointerMoved = [&](int x) { moves.push_back(x); };
  auto* title = Find("txtCaption");
  const QPoint grip = title->rect().center();
  const auto drag = [&](QPoint by) {
    QTest::mousePress(title, Qt::LeftButton, {}, grip);
    MoveTo(title, grip + by);
    QTest::mouseRelease(title, Qt::LeftButton);
  };
  drag({2, 1});
  EXPECT_EQ(window_.pos(), QPoint(100, 100));
  drag({-60, 40});
  EXPECT_EQ(window_.pos(), QPoint(40, 140));
  const int left = title->mapTo(&window_, grip).x();
  EXPECT_THAT(moves, ElementsAre(left + 2, left - 60));
  for (const WindowMode mode : {WindowMode::kMaximised, WindowMode::kFullScreen}) {
    line->SetMode(mode);
    drag({50, 50});
    EXPECT_EQ(window_.pos(), QPoint(40, 140));
  }
  QTest::mouseDClick(title, Qt::LeftButton);
  EXPECT_EQ(doubleClicks, 1);
}

TEST(TopLevel, AWindowHasTheBoundsThatItWasGivenBeforeItShowsAndAfter) {
  QWidget widget;
  TopLevel window(widget);
  const PixelRect bounds{100, 90, 700, 500};
  EXPECT_NE(window.Handle(), 0);  // from here on the system knows it
  window.SetBounds(bounds);
  EXPECT_EQ(window.Bounds(), bounds);
  window.Show();
  EXPECT_EQ(window.Bounds(), bounds);
}

/// Notes who is raised.
struct Raised : QObject {
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::ZOrderChange) names.push_back(watched->objectName());
    return false;
  }
  std::vector<QString> names;
};

TEST(TopLevel, WhatStandsOverItComesAlongToTheForeground) {
  QWidget widget;
  QDialog question(&widget), list(&widget), file(&list), hidden(&widget);
  Raised raised;
  for (const auto& [dialog, name] :
       {std::pair(&question, "questionBox"), {&list, "list"}, {&file, "file"}, {&hidden, "hidden"}}) {
    dialog->setObjectName(name);
    if (dialog != &hidden) dialog->show();
    dialog->installEventFilter(&raised);
  }
  TopLevel(widget).BringToForeground();
  EXPECT_THAT(raised.names, ElementsAre("list", "file", "questionBox"));
}

TEST(SizeGrips, KeepTheOtherEdgesAndTheSmallestSize) {
  const QRect start(100, 100, 900, 600);
  const QSize least = kSmallestWindow;
  const std::tuple<Qt::Edges, QPoint, QRect> cases[] = {
      {Qt::RightEdge, {30, 40}, {100, 100, 930, 600}},
      {Qt::BottomEdge | Qt::RightEdge, {-30, 40}, {100, 100, 870, 640}},
      {Qt::TopEdge | Qt::LeftEdge, {-30, 40}, {70, 140, 930, 560}},
      {Qt::LeftEdge, {5000, 0}, {1000 - least.width(), 100, least.width(), 600}},
      {Qt::TopEdge, {0, 5000}, {100, 700 - least.height(), 900, least.height()}},
      {Qt::BottomEdge | Qt::RightEdge, {-5000, -5000}, QRect(QPoint(100, 100), least)},
  };
  for (const auto& [edges, by, expected] : cases) EXPECT_EQ(DraggedBounds(start, edges, by), expected);
}

TEST_F(ChromeTest, GripsLieAroundTheWindowAndResizeIt) {
  auto* grips = new SizeGrips(&window_);
  grips->SetEnabled(true);
  window_.resize(950, 650);
  ASSERT_TRUE(WaitFor([&] { return Find("pctSizer(7)")->geometry().bottomRight() == QPoint(949, 649); }));
  EXPECT_EQ(window_.childAt(0, 0)->cursor().shape(), Qt::SizeFDiagCursor);
  EXPECT_EQ(window_.childAt(949, 0)->cursor().shape(), Qt::SizeBDiagCursor);
  EXPECT_EQ(window_.childAt(400, 647)->cursor().shape(), Qt::SizeVerCursor);
  EXPECT_EQ(window_.childAt(3, 300)->cursor().shape(), Qt::SizeHorCursor);
  EXPECT_FALSE(window_.childAt(6, 300)) << "no wider than that";
  QWidget* corner = Find("pctSizer(7)");
  QTest::mousePress(corner, Qt::LeftButton, {}, QPoint(5, 5));
  MoveTo(corner, {25, 15});
  QTest::mouseRelease(corner, Qt::LeftButton);
  EXPECT_EQ(window_.geometry(), QRect(100, 100, 970, 660));
  grips->SetEnabled(false);
  EXPECT_FALSE(window_.childAt(3, 300));
}

TEST_F(ChromeTest, TheAboutBoxSaysWhichProgramThisIsAndClosesByKeyboard) {
  AboutBox box(&window_, "Pallomir", "1.2.3", QDate(2026, 3, 9));
  for (const auto key : {Qt::Key_Return, Qt::Key_Escape}) {
    box.ShowBox();
    EXPECT_TRUE(box.isVisible());
    EXPECT_EQ(Find<QLabel>("lblVersion")->text(), "Version: 1.2.3\n\nDate: 2026-03-09");
    QTest::keyClick(&box, key);
    EXPECT_FALSE(box.isVisible());
  }
}

}  // namespace
}  // namespace pallomir
