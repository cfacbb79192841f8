#include "window/caption_text_widget.h"

#include <QPainter>

namespace pallomir {

CaptionText::CaptionText(QWidget* parent) : QLabel(parent) {
  setObjectName("txtCaption");
  setAccessibleName("Title");
  setTextFormat(Qt::PlainText);
  setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void CaptionText::Show(const QString& text) {
  if (text == this->text()) return;
  setText(text);
  setAccessibleDescription(text);
  UpdateToolTip();
}

void CaptionText::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::WindowText));
  painter.drawText(contentsRect(), static_cast<int>(alignment()) | Qt::TextSingleLine, Elided());
}

void CaptionText::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  UpdateToolTip();
}

QString CaptionText::Elided() const {
  return fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
}

void CaptionText::UpdateToolTip() { setToolTip(Elided() == text() ? QString() : text()); }

}  // namespace pallomir
