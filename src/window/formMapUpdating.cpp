#include "window/formMapUpdating.h"

#include <QHBoxLayout>
#include <QLabel>

namespace pallomir {

formMapUpdating::formMapUpdating(QWidget* owner) : OverlayFrame(owner, 0.15) {
  setObjectName("formMapUpdating");
  auto* text = new QLabel("Map Updating - please wait...", this);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(16, 8, 16, 8);
  row->addWidget(text);
}

void formMapUpdating::mousePressEvent(QMouseEvent*) { hide(); }

}  // namespace pallomir
