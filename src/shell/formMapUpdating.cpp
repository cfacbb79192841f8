#include "shell/formMapUpdating.h"

#include <QHBoxLayout>
#include <QLabel>

namespace pallomir {

formMapUpdating::formMapUpdating(QWidget* owner) : QFrame(owner) {
  setObjectName("formMapUpdating");
  setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
  setAutoFillBackground(true);
  auto* text = new QLabel("Map Updating - please wait...", this);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(16, 8, 16, 8);
  row->addWidget(text);
  hide();
}

void formMapUpdating::ShowNotice() {
  adjustSize();
  move((parentWidget()->width() - width()) / 2, parentWidget()->height() / 8);
  show();
  raise();
  repaint();  // the work that it announces may begin before the next event
}

void formMapUpdating::mousePressEvent(QMouseEvent*) { hide(); }

}  // namespace pallomir
