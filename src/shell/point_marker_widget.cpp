#include "shell/point_marker_widget.h"

#include <QHBoxLayout>
#include <QLabel>
#include <algorithm>

namespace pallomir {
namespace {

constexpr int kThickness = 2;

QFrame* Picture(QWidget* parent, const char* name, const QSize& size) {
  auto* picture = new QFrame(parent);
  picture->setObjectName(name);
  picture->setAttribute(Qt::WA_TransparentForMouseEvents);
  picture->setStyleSheet("background: #1040ff;");
  picture->resize(size);
  picture->hide();
  return picture;
}

}  // namespace

PointMarker::PointMarker(QWidget* mapArea) {
  constexpr int kLength = 2 * kReach + kThickness;
  pictures_ = {Picture(mapArea, "H1", {kLength, kThickness}), Picture(mapArea, "H2", {kLength, kThickness}),
               Picture(mapArea, "V1", {kThickness, kLength}), Picture(mapArea, "V2", {kThickness, kLength})};
}

void PointMarker::ShowAt(const QPoint& at) {
  const QPoint corners[] = {{-kReach, -kReach}, {-kReach, kReach}, {-kReach, -kReach}, {kReach, -kReach}};
  for (std::size_t i = 0; i < pictures_.size(); ++i) {
    pictures_[i]->hide();
    pictures_[i]->move(at + corners[i]);
    pictures_[i]->show();
    pictures_[i]->raise();
  }
}

void PointMarker::Hide() {
  for (QFrame* picture : pictures_) picture->hide();
}

PointInfos::PointInfos(QWidget* mapArea) : QFrame(mapArea) {
  setObjectName("pointInfos");
  setAttribute(Qt::WA_TransparentForMouseEvents);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(4);
  hide();
}

void PointInfos::ShowTexts(const QStringList& texts) {
  while (txtDP_Info_.size() < static_cast<std::size_t>(texts.size())) {
    auto* label = new QLabel(this);
    label->setObjectName(QString("txtDP_Info(%1)").arg(txtDP_Info_.size() + 1));
    label->setTextFormat(Qt::PlainText);
    label->setAutoFillBackground(true);
    label->setFrameStyle(QFrame::StyledPanel);
    label->setMargin(3);
    layout()->addWidget(label);
    txtDP_Info_.push_back(label);
  }
  for (std::size_t k = 0; k < txtDP_Info_.size(); ++k) {
    const bool used = k < static_cast<std::size_t>(texts.size());
    if (used) txtDP_Info_[k]->setText(texts[static_cast<int>(k)]);
    txtDP_Info_[k]->setVisible(used);
  }
  adjustSize();
  move(std::max(0, (parentWidget()->width() - width()) / 2), 4);
  show();
  raise();
}

}  // namespace pallomir
