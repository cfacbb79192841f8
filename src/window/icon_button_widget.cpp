#include "window/icon_button_widget.h"

#include <QKeyEvent>
#include <QStyleOptionToolButton>
#include <QStylePainter>
#include <QSvgRenderer>

#include "ui/keyboard_tip_widget.h"

// The icons are in a static library, of which the linker takes only what is named. The macro must stand
// outside of any namespace.
static void LoadIcons() { Q_INIT_RESOURCE(icons); }

namespace pallomir {
namespace {

constexpr int kSide = 26;
constexpr int kPictureSide = 16;

}  // namespace

IconButton::IconButton(QWidget* parent, const QString& name, const QString& icon, const QString& text)
    : QToolButton(parent), file_(":/icons/" + icon + ".svg") {
  LoadIcons();
  setObjectName(name);
  setAccessibleName(text);
  setToolTip(text);
  setAutoRaise(true);
  setFocusPolicy(Qt::TabFocus);
  ShowTipByKeyboard(this);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  connect(this, &QToolButton::clicked, this, [this] {
    if (chosen) chosen();
  });
}

void IconButton::SetPicture(const QString& icon, const QString& text) {
  file_ = ":/icons/" + icon + ".svg";
  picture_ = {};
  setAccessibleName(text);
  setToolTip(text);
  update();
}

QSize IconButton::sizeHint() const { return {kSide, kSide}; }

void IconButton::paintEvent(QPaintEvent*) {
  QStylePainter painter(this);
  QStyleOptionToolButton option;
  initStyleOption(&option);
  painter.drawComplexControl(QStyle::CC_ToolButton, option);
  const QPalette::ColorGroup group = isEnabled() ? QPalette::Active : QPalette::Disabled;
  const QPixmap& picture = Picture(palette().color(group, QPalette::WindowText), kPictureSide);
  painter.drawPixmap((width() - kPictureSide) / 2, (height() - kPictureSide) / 2, picture);
}

// The files have one colour, whatever it is; the palette's takes its place.
const QPixmap& IconButton::Picture(const QColor& colour, int side) {
  const qreal ratio = devicePixelRatioF();
  const QSize size = (QSizeF(side, side) * ratio).toSize();
  if (picture_.size() == size && pictureColour_ == colour) return picture_;
  picture_ = QPixmap(size);
  picture_.fill(Qt::transparent);
  QPainter painter(&picture_);
  QSvgRenderer(file_).render(&painter);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(picture_.rect(), colour);
  painter.end();
  picture_.setDevicePixelRatio(ratio);
  pictureColour_ = colour;
  return picture_;
}

void IconButton::enterEvent(QEnterEvent* event) {
  QToolButton::enterEvent(event);
  if (entered) entered();
}

// A tool button knows the space bar only.
void IconButton::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    if (!event->isAutoRepeat()) click();
  } else {
    QToolButton::keyPressEvent(event);
  }
}

}  // namespace pallomir
