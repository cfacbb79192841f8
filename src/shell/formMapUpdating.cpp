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
  // Painted with the next event: to paint it at once would compose the whole map under it, which takes longer
  // than drawing a million points.
}

void formMapUpdating::mousePressEvent(QMouseEvent*) { hide(); }

}  // namespace pallomir
