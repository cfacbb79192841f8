#pragma once

#include <QProxyStyle>

namespace pallomir {

/// The desktop's style, with edges in the colour of the text where the palette is so dark that the style's
/// own, which are darker than the ground, can't be seen: those of boxes, fields and buttons. Grey text that
/// can't be told from its ground stands between ground and text. A menu that is higher than the screen
/// scrolls; columns of its entries would go on beyond the screen's edge.
class ContrastStyle : public QProxyStyle {
 public:
  using QProxyStyle::polish;
  void polish(QPalette& palette) override;
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                          const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returned) const override;
};

}  // namespace pallomir
