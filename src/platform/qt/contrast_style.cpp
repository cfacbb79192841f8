#include "platform/qt/contrast_style.h"

#include <QPainter>
#include <QStyleOption>

namespace pallomir {
namespace {

constexpr int kDarkest = 40;  // of 255; what is darker has no room for an edge that is darker still

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

}  // namespace

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
