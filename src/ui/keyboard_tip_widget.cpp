#include "ui/keyboard_tip_widget.h"

#include <QFocusEvent>
#include <QTimer>
#include <QToolTip>
#include <QWidget>

namespace pallomir {
namespace {

constexpr int kBelowPointer = 16;  // pixels that Qt leaves for the pointer above a tip

class KeyboardTip : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::FocusIn) {
      const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
      // Later, because the tip goes at each change of the focus, this one too.
      if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason)
        QTimer::singleShot(0, watched, [watched] { Show(*static_cast<QWidget*>(watched)); });
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  static void Show(QWidget& widget) {
    if (!widget.hasFocus()) return;
    const QPoint below(0, widget.height() + 2 - kBelowPointer);
    QToolTip::showText(widget.mapToGlobal(below), widget.toolTip(), &widget);
  }
};

}  // namespace

void ShowTipByKeyboard(QWidget* widget) { widget->installEventFilter(new KeyboardTip(widget)); }

}  // namespace pallomir
