#include "shell/point_marker_widget.h"

#include <QLabel>

#include "timeline/timeline_layout.h"

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

PointMarker::PointMarker(QWidget* mapArea) : mapArea_(mapArea) {
  constexpr int kLength = 2 * kReach + kThickness;
  pictures_ = {Picture(mapArea, "H1", {kLength, kThickness}), Picture(mapArea, "H2", {kLength, kThickness}),
               Picture(mapArea, "V1", {kThickness, kLength}), Picture(mapArea, "V2", {kThickness, kLength})};
  lblDP_Info_ = new QLabel(mapArea);
  lblDP_Info_->setObjectName("lblDP_Info");
  lblDP_Info_->setTextFormat(Qt::PlainText);
  lblDP_Info_->setAttribute(Qt::WA_TransparentForMouseEvents);
  lblDP_Info_->setAutoFillBackground(true);
  lblDP_Info_->setFrameStyle(QFrame::StyledPanel);
  lblDP_Info_->setMargin(4);
  lblDP_Info_->hide();
}

void PointMarker::ShowAt(const QPoint& at) {
  at_ = at;
  const QPoint corners[] = {{-kReach, -kReach}, {-kReach, kReach}, {-kReach, -kReach}, {kReach, -kReach}};
  for (std::size_t i = 0; i < pictures_.size(); ++i) {
    pictures_[i]->hide();
    pictures_[i]->move(at + corners[i]);
    pictures_[i]->show();
    pictures_[i]->raise();
  }
}

void PointMarker::ShowText(const QString& text) {
  lblDP_Info_->setText(text);
  lblDP_Info_->adjustSize();
  const PixelRect place = PlaceBeside(at_.x(), at_.y(), {lblDP_Info_->width(), lblDP_Info_->height()},
                                      {0, 0, mapArea_->width(), mapArea_->height()});
  lblDP_Info_->move(place.left, place.top);
  lblDP_Info_->show();
  lblDP_Info_->raise();
}

void PointMarker::Hide() {
  lblDP_Info_->hide();
  for (QFrame* picture : pictures_) picture->hide();
}

}  // namespace pallomir
