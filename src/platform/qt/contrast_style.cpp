#include "platform/qt/contrast_style.h"

#include <QPainter>
#include <QStyleOption>
#include <cstdlib>
#include <utility>

namespace pallomir {
namespace {

constexpr int kDarkest = 40;        // of 255; what is darker has no room for an edge that is darker still
constexpr int kLeastContrast = 40;  // of 255, between text and ground

bool IsVeryDark(const QPalette& palette) { return qGray(palette.color(QPalette::Window).rgb()) < kDarkest; }

bool HasEdge(QStyle::PrimitiveElement element) {
  switch (element) {
    case QStyle::PE_IndicatorCheckBox:
    case QStyle::PE_FrameLineEdit:
    case QStyle::PE_PanelButtonCommand:
    case QStyle::PE_FrameMenu:
    case QStyle::PE_Frame:
      return true;
    default:
      return false;
  }
}

void DrawEdge(const QStyleOption& option, QPainter& painter) {
  const bool isEnabled = option.state.testFlag(QStyle::State_Enabled);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, false);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(
      option.palette.color(isEnabled ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
  painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
  painter.restore();
}

QColor Between(const QColor& a, const QColor& b) {
  return {(a.red() + b.red()) / 2, (a.green() + b.green()) / 2, (a.blue() + b.blue()) / 2};
}

int Contrast(const QColor& a, const QColor& b) { return std::abs(qGray(a.rgb()) - qGray(b.rgb())); }

}  // namespace

// The desktop's palette may make the colours of what is disabled darker than a ground that is black.
void ContrastStyle::polish(QPalette& palette) {
  QProxyStyle::polish(palette);
  const std::pair<QPalette::ColorRole, QPalette::ColorRole> roles[] = {
      {QPalette::WindowText, QPalette::Window},
      {QPalette::Text, QPalette::Base},
      {QPalette::ButtonText, QPalette::Button},
  };
  for (const auto& [text, ground] : roles) {
    const QColor on = palette.color(QPalette::Disabled, ground);
    if (Contrast(palette.color(QPalette::Disabled, text), on) < kLeastContrast)
      palette.setColor(QPalette::Disabled, text, Between(palette.color(QPalette::Active, text), on));
  }
}

void ContrastStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                  const QWidget* widget) const {
  QProxyStyle::drawPrimitive(element, option, painter, widget);
  // A focused field has an edge of its own.
  if (HasEdge(element) && IsVeryDark(option->palette) && !option->state.testFlag(State_HasFocus))
    DrawEdge(*option, *painter);
}

void ContrastStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                       QPainter* painter, const QWidget* widget) const {
  QProxyStyle::drawComplexControl(control, option, painter, widget);
  const bool isField = control == CC_SpinBox || control == CC_ComboBox;
  if (isField && IsVeryDark(option->palette) && !option->state.testFlag(State_HasFocus))
    DrawEdge(*option, *painter);
}

int ContrastStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                             QStyleHintReturn* returned) const {
  return hint == SH_Menu_Scrollable ? 1 : QProxyStyle::styleHint(hint, option, widget, returned);
}

}  // namespace pallomir
