#include "window/formSplash.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

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

formSplash::formSplash(QWidget* owner, const QString& version) : OverlayFrame(owner, 0.5) {
  setObjectName("formSplash");
  setAccessibleName("About Pallomir");
  auto* title = new QLabel("Pallomir", this);
  QFont font = title->font();
  font.setPointSizeF(font.pointSizeF() * 1.6);
  title->setFont(font);
  auto* ok = new QPushButton("OK", this);
  ok->setObjectName("cmdSplashOK");
  ok->setFocusPolicy(Qt::TabFocus);  // a click leaves the keyboard where it is
  connect(ok, &QPushButton::clicked, this, &QWidget::hide);

  auto* rows = new QGridLayout(this);
  rows->setVerticalSpacing(2);
  rows->setHorizontalSpacing(16);
  rows->addWidget(title, 0, 0);
  rows->addWidget(new QLabel(version, this), 0, 1);
  constexpr int kLinesAColumn = (kStatusLines + 1) / 2;
  for (int i = 0; i < kStatusLines; ++i) {
    auto* line = new QCheckBox(kStatusTexts[i], this);
    line->setFocusPolicy(Qt::NoFocus);
    line->setAttribute(Qt::WA_TransparentForMouseEvents);  // the page ticks it, not the user
    rows->addWidget(line, 1 + i % kLinesAColumn, i / kLinesAColumn);
    lines_.push_back(line);
  }
  rows->addWidget(ok, 1 + kLinesAColumn, 1, Qt::AlignRight);
}

void formSplash::Tick(int line) {
  if (line >= 1 && line <= kStatusLines) lines_[static_cast<std::size_t>(line - 1)]->setChecked(true);
}

}  // namespace pallomir
