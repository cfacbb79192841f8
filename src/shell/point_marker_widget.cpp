#include "shell/point_marker_widget.h"

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

}  // namespace pallomir
