#include "window/caption_text_widget.h"

#include <QPainter>

namespace pallomir {
namespace {

// The window's frame, its tip and its menu tell the name too.
QString WithoutName(const QString& text) {
  const QString name = "Pallomir ";
  return text.startsWith(name) ? text.mid(name.size()).trimmed() : text;
}

QString Figures(const QString& text) {
  const QString words = " Data Points";
  return WithoutName(text.endsWith(words) ? text.chopped(words.size()) : text);
}

}  // namespace

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
  painter.drawText(contentsRect(), static_cast<int>(alignment()) | Qt::TextSingleLine, Shown());
}

void CaptionText::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  UpdateToolTip();
}

QString CaptionText::Shown() const {
  const int room = contentsRect().width();
  for (const QString& form : {text(), WithoutName(text())})
    if (fontMetrics().horizontalAdvance(form) <= room) return form;
  return fontMetrics().elidedText(Figures(text()), Qt::ElideRight, room);
}

int CaptionText::LeastWidth() const { return fontMetrics().horizontalAdvance(Figures(text())); }

void CaptionText::UpdateToolTip() { setToolTip(Shown() == text() ? QString() : text()); }

}  // namespace pallomir
