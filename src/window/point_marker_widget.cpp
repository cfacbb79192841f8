#include "window/point_marker_widget.h"

#include <QLabel>

#include "timeline/text_rows.h"

namespace pallomir {
namespace {

constexpr int kThickness = 2;
constexpr int kGap = 4;  // between two texts

QRect ToQt(const PixelRect& rect) { return {rect.left, rect.top, rect.width, rect.height}; }

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
  hide();
}

void PointInfos::ShowTexts(const QStringList& texts) {
  while (txtDP_Info_.size() < static_cast<std::size_t>(texts.size())) AddLabel();
  std::vector<PixelSize> sizes;
  for (std::size_t k = 0; k < static_cast<std::size_t>(texts.size()); ++k) {
    txtDP_Info_[k]->setText(texts[static_cast<int>(k)]);
    const QSize size = txtDP_Info_[k]->sizeHint();
    sizes.push_back({size.width(), size.height()});
  }
  const QWidget* map = parentWidget();
  const auto places = PlaceInRows(sizes, AreaForTexts({map->width(), map->height()}), map->width() / 2, kGap);
  QRect all;
  for (const PixelRect& place : places) all |= ToQt(place);
  setGeometry(all);
  for (std::size_t k = 0; k < txtDP_Info_.size(); ++k) {
    txtDP_Info_[k]->setVisible(k < places.size());
    if (k < places.size()) txtDP_Info_[k]->setGeometry(ToQt(places[k]).translated(-all.topLeft()));
  }
  if (places.size() < sizes.size())
    txtDP_Info_[places.size() - 1]->setText(QString("and %1 more").arg(sizes.size() - places.size() + 1));
  show();
  raise();
}

void PointInfos::AddLabel() {
  auto* label = new QLabel(this);
  label->setObjectName(QString("txtDP_Info(%1)").arg(txtDP_Info_.size() + 1));
  label->setTextFormat(Qt::PlainText);
  label->setAutoFillBackground(true);
  label->setFrameStyle(QFrame::StyledPanel);
  label->setMargin(3);
  txtDP_Info_.push_back(label);
}

}  // namespace pallomir
