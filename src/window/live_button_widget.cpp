#include "window/live_button_widget.h"

namespace pallomir {

LiveButton::LiveButton(QWidget* parent) : QPushButton(parent) {
  setObjectName("lblLive");
  setFocusPolicy(Qt::TabFocus);
  setMinimumWidth(1);  // gives way in a narrow window
  hide();
}

void LiveButton::ShowState(const QString& word, const QString& tip) {
  setText(word);
  setToolTip(tip);
  setAccessibleName(word);
  setAccessibleDescription(tip);
  setVisible(!word.isEmpty());
}

}  // namespace pallomir
