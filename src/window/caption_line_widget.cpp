#include "window/caption_line_widget.h"

#include <QApplication>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QWindow>

#include "ui/accessible_widget.h"
#include "window/caption_text_widget.h"
#include "window/icon_button_widget.h"
#include "window/tab_order_widget.h"

namespace pallomir {
namespace {

constexpr int kLeastControlWidth = 48;

void Call(const std::function<void()>& callback) {
  if (callback) callback();
}

}  // namespace

CaptionLine::CaptionLine(QWidget* parent) : QWidget(parent), row_(new QHBoxLayout(this)) {
  setObjectName("captionLine");
  row_->setContentsMargins(6, 3, 4, 3);
  row_->setSpacing(0);
  AddMenuButton();
  controls_ = new QHBoxLayout;
  controls_->setContentsMargins(6, 0, 6, 0);
  controls_->setSpacing(4);
  row_->addLayout(controls_);
  AddTitle();
  AddStates();
  AddHelp();
  AddWindowButtons();
  SetMode(WindowMode::kNormal);
}

void CaptionLine::AddMenuButton() {
  auto* pctMenu = new QFrame(this);
  pctMenu->setObjectName("pctMenu");
  auto* inside = new QHBoxLayout(pctMenu);
  inside->setContentsMargins(0, 0, 0, 0);
  lblMenu_ = new QPushButton("Menu", pctMenu);
  SetAccessible(lblMenu_, {.role = QAccessible::ButtonMenu, .opensMenu = true});
  lblMenu_->setObjectName("lblMenu");
  lblMenu_->setAccessibleName("Menu");
  lblMenu_->setFocusPolicy(Qt::TabFocus);
  lblMenu_->setMouseTracking(true);
  lblMenu_->installEventFilter(this);
  connect(lblMenu_, &QPushButton::clicked, this, [this] { Call(menu); });
  inside->addWidget(lblMenu_);
  row_->addWidget(pctMenu);
}

void CaptionLine::AddTitle() {
  // Keeps the whole title and is not seen: txtCaption shows it as far as there is room.
  lblCaption_ = new QLabel(this);
  lblCaption_->setObjectName("lblCaption");
  lblCaption_->setTextFormat(Qt::PlainText);
  lblCaption_->hide();
  txtCaption_ = new CaptionText(this);
  txtCaption_->setMouseTracking(true);
  txtCaption_->installEventFilter(this);
  row_->addWidget(txtCaption_, 1);
  // Takes the title's place while that is hidden.
  row_->addStretch(0);
}

void CaptionLine::AddStates() {
  lblDemo_ = AddWord("lblDemo", "Demo");
  lblDemo_->setToolTip(
      "Demo mode: the units and their data are invented.\nMenu, Options, Demo Mode leaves it.");
  lblDemo_->setFrameStyle(QFrame::Box | QFrame::Plain);
  lblDemo_->setContentsMargins(4, 1, 4, 1);
  lblLamp_ = AddWord("lblLamp", "");
  firstState_ = picLamp_ = new Lamp(this);
  row_->addSpacing(6);
  row_->addWidget(picLamp_);
  row_->addSpacing(4);
}

void CaptionLine::AddState(QWidget* control) {
  row_->insertWidget(row_->indexOf(lblLamp_) + 1, control);
  QWidget* before = firstState_->previousInFocusChain();
  while (!(before->focusPolicy() & Qt::TabFocus)) before = before->previousInFocusChain();
  SetTabOrder({before, control, firstState_});
  firstState_ = control;
}

// In a narrow window it gives way to the buttons, and is cut.
QLabel* CaptionLine::AddWord(const char* name, const QString& text) {
  auto* word = new QLabel(text, this);
  word->setObjectName(name);
  word->setTextFormat(Qt::PlainText);
  word->setMinimumWidth(1);
  word->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  word->setContentsMargins(6, 0, 0, 0);
  word->hide();
  row_->addWidget(word);
  return word;
}

void CaptionLine::AddHelp() {
  IconButton* keyboard = AddButton("pctHelp_1", "help_keyboard", "Show the keys on a keyboard", showKeyboard);
  keyboard->entered = [this] { Call(showKeyboard); };
  // A click leaves the focus where it is: with it, the button was pressed by keyboard.
  connect(keyboard, &QAbstractButton::clicked, this, [this, keyboard] {
    if (keyboard->hasFocus()) Call(readKeyboard);
  });
  AddButton("pctHelp_2", "help_list", "List the hot keys", showKeyList)->entered = [this] {
    Call(showKeyList);
  };
  row_->addSpacing(6);
}

void CaptionLine::AddWindowButtons() {
  const auto add = [this](const char* name, const char* icon, const char* text,
                          std::function<void()>& action) {
    IconButton* button = AddButton(name, icon, text, action);
    button->setMouseTracking(true);
    button->installEventFilter(this);
    return button;
  };
  add("pctButton_Minimize", "minimise", "Minimize", minimise);
  pctButton_Normal_ = add("pctButton_Normal", "normal", "Normal size", normal);
  pctButton_Maximize_ = add("pctButton_Maximize", "maximise", "Maximize", maximise);
  pctButton_FullScreen_ = add("pctButton_FullScreen", "full_screen", "Full screen", fullScreen);
  add("pctButton_Exit", "exit", "Exit", exit);
  for (IconButton* button : {pctButton_Normal_, pctButton_Maximize_, pctButton_FullScreen_})
    button->setCheckable(true);
}

IconButton* CaptionLine::AddButton(const char* name, const char* icon, const char* text,
                                   std::function<void()>& action) {
  auto* button = new IconButton(this, name, icon, text);
  button->chosen = [this, &action] {
    SetMode(mode_);  // a click has turned the mark; the mode says when it is to turn
    Call(action);
  };
  row_->addWidget(button);
  return button;
}

void CaptionLine::AddControl(QWidget* control) {
  // In a narrow window the pickers give way, not the window's buttons.
  control->setMinimumWidth(kLeastControlWidth);
  controls_->addWidget(control);
}

void CaptionLine::SetCaption(const QString& text) {
  lblCaption_->setText(text);
  txtCaption_->Show(text);
  FitLampWord();
}

void CaptionLine::SetCaptionVisible(bool visible) { txtCaption_->setVisible(visible); }

void CaptionLine::SetMenuText(const QString& text) {
  lblMenu_->setText(text);
  lblMenu_->setAccessibleName(text);
}

void CaptionLine::SetLamp(LampState state, const QString& tip, const QString& word) {
  picLamp_->Show(state, tip);
  lampWord_ = word;
  lblLamp_->setToolTip(tip);
  FitLampWord();
  lblLamp_->setVisible(!word.isEmpty());
}

// The room of both is the same whichever word stands there, so that this comes to rest.
void CaptionLine::FitLampWord() {
  const QMargins margins = lblLamp_->contentsMargins();
  const int whole = lblLamp_->fontMetrics().horizontalAdvance(lampWord_) + margins.left() + margins.right();
  const int room = txtCaption_->width() + (lblLamp_->isVisible() ? lblLamp_->width() : 0);
  QString word = lampWord_;
  if (room < txtCaption_->LeastWidth() + whole) word = word.mid(word.lastIndexOf(": ") + 1).trimmed();
  if (!word.isEmpty()) word[0] = word[0].toUpper();
  lblLamp_->setText(word);
}

void CaptionLine::SetDemoMode(bool on) { lblDemo_->setVisible(on); }

void CaptionLine::SetMode(WindowMode mode) {
  mode_ = mode;
  pctButton_Normal_->setChecked(mode == WindowMode::kNormal);
  pctButton_Maximize_->setChecked(mode == WindowMode::kMaximised);
  pctButton_FullScreen_->setChecked(mode == WindowMode::kFullScreen);
}

void CaptionLine::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || mode_ == WindowMode::kFullScreen) return;
  drag_ = Drag{event->globalPosition().toPoint(), window()->pos()};
}

void CaptionLine::mouseMoveEvent(QMouseEvent* event) {
  if (!drag_) return;
  if (!event->buttons().testFlag(Qt::LeftButton)) {
    drag_.reset();  // the system has moved the window and kept the release to itself
    return;
  }
  DragTo(event->globalPosition().toPoint());
}

// Not before the drag distance: a system that takes over at the first press would eat the double click.
void CaptionLine::DragTo(const QPoint& global) {
  const QPoint way = global - drag_->start;
  if (!drag_->moving) {
    if (way.manhattanLength() < QApplication::startDragDistance()) return;
    QWindow* handle = window()->windowHandle();
    if (handle && handle->startSystemMove()) {
      drag_.reset();
      return;
    }
    // Without a window manager nothing gives a maximised window its old size while it is dragged.
    if (mode_ != WindowMode::kNormal) return;
    drag_->moving = true;
  }
  window()->move(drag_->window + way);
}

void CaptionLine::mouseReleaseEvent(QMouseEvent*) { drag_.reset(); }

void CaptionLine::mouseDoubleClickEvent(QMouseEvent* event) {
  drag_.reset();
  if (event->button() == Qt::LeftButton) Call(doubleClicked);
}

void CaptionLine::leaveEvent(QEvent*) { Call(pointerLeft); }

bool CaptionLine::eventFilter(QObject* watched, QEvent* event) {
  if (watched == txtCaption_ && event->type() == QEvent::Resize) FitLampWord();
  if (event->type() == QEvent::MouseMove && pointerMoved) {
    const auto* control = static_cast<QWidget*>(watched);
    pointerMoved(control->mapTo(window(), static_cast<QMouseEvent*>(event)->position().toPoint()).x());
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace pallomir
