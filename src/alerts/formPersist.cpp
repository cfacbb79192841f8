#include "alerts/formPersist.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QScreen>
#include <QWindow>

#include "platform/qt/owner_block.h"
#include "ui/accessible_widget.h"

namespace pallomir {
namespace {

// It can't be minimised: what sounds has to be seen.
constexpr Qt::WindowFlags kFlags =
    Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint;
// As long as a dialog of ours may need to get the keyboard that the main window was given first.
constexpr int kGraceMilliseconds = 100;
// Within this the press of a repeat follows its release.
constexpr int kRepeatMilliseconds = 60;

}  // namespace

formPersist::formPersist(QWidget* owner) : QWidget(nullptr, kFlags), owner_(owner) {
  setObjectName("formPersist");
  SetAccessible(this, {.role = QAccessible::AlertMessage});
  setWindowTitle("  pallomir -- alert");
  auto* label = new QLabel("Click mouse or press any key to disable alert sound", this);
  label->setObjectName("lblPersist");
  // Presses are the window's. One that hides forgets a press of its own, but not one of its child, and the
  // next click somewhere else would be lost.
  label->setAttribute(Qt::WA_TransparentForMouseEvents);
  setAccessibleName(label->text());
  setFocusPolicy(Qt::StrongFocus);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(28, 24, 28, 24);
  row->addWidget(label);
  row->setSizeConstraint(QLayout::SetFixedSize);
  taking_.setSingleShot(true);
  taking_.setInterval(kGraceMilliseconds);
  connect(&taking_, &QTimer::timeout, this, [this] { TakeKeyboard(); });
  releasing_.setSingleShot(true);
  releasing_.setInterval(kRepeatMilliseconds);
  connect(&releasing_, &QTimer::timeout, this, [this] { ForgetHeldKey(); });
  owner_->installEventFilter(this);
  connect(qApp, &QGuiApplication::focusWindowChanged, this, [this](const QWindow* window) {
    if (window && window == owner_->windowHandle() && isVisible()) taking_.start();
  });
}

formPersist::~formPersist() {
  owner_->removeEventFilter(this);
  qApp->removeEventFilter(this);
}

void formPersist::ShowOver() {
  adjustSize();
  const QRect over = owner_->geometry();
  move(over.left() + (over.width() - width()) / 2, over.top() + (over.height() - height()) / 2);
  const bool takesKeyboard = MayTakeKeyboard();
  AskForKeyboard(*this, takesKeyboard);
  // Nobody keeps it over a main window that is itself over all others.
  const QWindow* main = owner_->windowHandle();
  windowHandle()->setFlag(Qt::WindowStaysOnTopHint, main && main->flags().testFlag(Qt::WindowStaysOnTopHint));
  show();
  raise();
  if (takesKeyboard) activateWindow();
}

void formPersist::Raise() {
  if (isVisible()) raise();
}

// A key that is held down since before the window came is not meant for it.
void formPersist::keyPressEvent(QKeyEvent* event) {
  if (event->isAutoRepeat()) return;
  heldKey_ = event->key();
  qApp->installEventFilter(this);
  close();
}

void formPersist::mousePressEvent(QMouseEvent*) { close(); }

void formPersist::closeEvent(QCloseEvent* event) {
  event->accept();
  GiveKeyboardOn();
  if (closed) closed();
}

void formPersist::HideAway() {
  GiveKeyboardOn();
  hide();
}

// Without a window manager nobody else does.
void formPersist::GiveKeyboardOn() {
  QWidget* modal = QApplication::activeModalWidget();
  if (isActiveWindow()) (modal ? modal : owner_)->activateWindow();
}

bool formPersist::eventFilter(QObject* watched, QEvent* event) {
  if (watched == owner_ && event->type() == QEvent::WindowActivate && isVisible()) taking_.start();
  if (watched == popup_ && event->type() == QEvent::Hide) {
    popup_->removeEventFilter(this);
    popup_ = nullptr;
    taking_.start();
  }
  return IsOfHeldKey(event) || QWidget::eventFilter(watched, event);
}

// The repeats of the key that closed the window reach the main window, where they would be hot keys. Each is
// a release and a press; not all of them are marked as repeats, so a release is one only when no press
// follows.
bool formPersist::IsOfHeldKey(QEvent* event) {
  const bool isPress = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
  if (!heldKey_ || (!isPress && event->type() != QEvent::KeyRelease)) return false;
  const auto* key = static_cast<QKeyEvent*>(event);
  const bool isIts = key->key() == *heldKey_;
  if (isIts && !isPress) {
    releasing_.start();
    return true;
  }
  if (isIts && (key->isAutoRepeat() || releasing_.isActive())) {
    if (event->type() == QEvent::KeyPress) releasing_.stop();
    return true;
  }
  ForgetHeldKey();
  return false;
}

void formPersist::ForgetHeldKey() {
  heldKey_.reset();
  releasing_.stop();
  qApp->removeEventFilter(this);
}

// While a menu is open the toolkit does not follow which window is active, and it does not catch up either:
// the system's own word counts.
bool formPersist::MayTakeKeyboard() const {
  if (QApplication::activePopupWidget() || QApplication::activeModalWidget()) return false;
  const QWindow* focus = QGuiApplication::focusWindow();
  if (focus && focus->type() != Qt::Popup) return focus == owner_->windowHandle();
  return QApplication::activeWindow() == owner_;
}

// Beside a dialog that came over the main window both are seen, and can be answered.
void formPersist::StandBelow(const QRect& dialog) {
  constexpr int kGap = 8;
  const QRect own = frameGeometry();
  if (own.intersects(dialog)) {
    const int top = dialog.bottom() + kGap;
    if (top + own.height() > screen()->availableGeometry().bottom()) return;  // it would cover the dialog
    move(own.left(), top);
  }
  raise();
}

void formPersist::TakeKeyboard() {
  if (!isVisible()) return;
  popup_ = QApplication::activePopupWidget();
  if (popup_) return popup_->installEventFilter(this);
  const QWindow* focus = QGuiApplication::focusWindow();
  const bool isOfMain = focus && focus->transientParent() == owner_->windowHandle();
  if (isOfMain && focus->type() == Qt::Dialog) return StandBelow(focus->frameGeometry());
  if (!MayTakeKeyboard()) return;
  raise();
  activateWindow();
}

}  // namespace pallomir
