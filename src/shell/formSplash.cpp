#include "shell/formSplash.h"

#include <QCheckBox>
#include <QLabel>
#include <QVBoxLayout>

namespace pallomir {
namespace {

constexpr const char* kStatusTexts[formSplash::kStatusLines] = {"Map Created",
                                                                "Second Phase Initiated",
                                                                "Copyright Created",
                                                                "Tracking Layer Created",
                                                                "Zones Added",
                                                                "Map Added",
                                                                "Tracking Added",
                                                                "Right Click Listener Added",
                                                                "Mouse Move Listener Added",
                                                                "Left Click Listener Added",
                                                                "Zoomed and Centered",
                                                                "Map Overlay Added",
                                                                "Tracking Overlay Added",
                                                                "Large Map Control Added",
                                                                "Map Type Control Added",
                                                                "Zoom End Listener Added",
                                                                "Geocoder Added"};

}  // namespace

formSplash::formSplash(QWidget* owner) : QFrame(owner) {
  setObjectName("formSplash");
  setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
  setAutoFillBackground(true);
  setAttribute(Qt::WA_TransparentForMouseEvents);
  auto* rows = new QVBoxLayout(this);
  auto* title = new QLabel("Pallomir", this);
  QFont font = title->font();
  font.setPointSizeF(font.pointSizeF() * 1.6);
  title->setFont(font);
  rows->addWidget(title);
  rows->setSpacing(2);
  for (const char* text : kStatusTexts) {
    auto* line = new QCheckBox(text, this);
    line->setFocusPolicy(Qt::NoFocus);
    rows->addWidget(line);
    lines_.push_back(line);
  }
  hide();
}

void formSplash::Tick(int line) {
  if (line >= 1 && line <= kStatusLines) lines_[static_cast<std::size_t>(line - 1)]->setChecked(true);
}

void formSplash::ShowCentred() {
  adjustSize();
  move((parentWidget()->width() - width()) / 2, (parentWidget()->height() - height()) / 2);
  show();
  raise();
  repaint();
}

}  // namespace pallomir
