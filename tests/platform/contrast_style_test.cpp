#include "platform/qt/contrast_style.h"

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QDateTimeEdit>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>

namespace pallomir {
namespace {

QPalette TwoColours(const QColor& ground, const QColor& text) {
  QPalette palette(text, ground, ground, ground, ground, text, text, ground, ground);
  palette.setColor(QPalette::PlaceholderText, text);
  return palette;
}

/// The strongest contrast between the ground and the pixels of the widget's left half, where no text is.
int EdgeContrast(QWidget& widget, const QPalette& palette, QStyle& style) {
  widget.setStyle(&style);
  widget.setPalette(palette);
  widget.resize(160, 30);
  widget.ensurePolished();
  const QImage image = widget.grab().toImage();
  const int ground = qGray(palette.color(QPalette::Window).rgb());
  int strongest = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width() / 2; ++x)
      strongest = std::max(strongest, std::abs(qGray(image.pixel(x, y)) - ground));
  return strongest;
}

TEST(ContrastStyle, BoxesFieldsAndButtonsHaveAnEdgeUnderAnyPalette) {
  ContrastStyle ours;
  QProxyStyle plain;
  const QPalette black = TwoColours(Qt::black, Qt::white);
  const QPalette light = TwoColours(QColor(0xef, 0xef, 0xef), Qt::black);
  QCheckBox box;
  QLineEdit field;
  QPushButton button;
  for (QWidget* each : std::initializer_list<QWidget*>{&box, &field, &button}) {
    EXPECT_GT(EdgeContrast(*each, black, ours), 200) << each->metaObject()->className();
    EXPECT_EQ(EdgeContrast(*each, light, ours), EdgeContrast(*each, light, plain));
  }
  QDateTimeEdit picker;
  picker.setDisplayFormat(" ");
  EXPECT_GT(EdgeContrast(picker, black, ours), 200);
}

TEST(ContrastStyle, GreyTextIsSeenUnderAnyPaletteAndLeftWhereItIs) {
  ContrastStyle style;
  const struct {
    QColor ground, text, grey, expected;
  } cases[] = {
      {Qt::black, Qt::white, Qt::black, QColor(127, 127, 127)},
      {Qt::white, Qt::black, QColor(216, 216, 216), QColor(127, 127, 127)},
      {Qt::white, Qt::black, QColor(215, 215, 215), QColor(215, 215, 215)},
  };
  for (const auto& row : cases) {
    QPalette palette = TwoColours(row.ground, row.text);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
      palette.setColor(QPalette::Disabled, role, row.grey);
    style.polish(palette);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
      EXPECT_EQ(palette.color(QPalette::Disabled, role), row.expected);
      EXPECT_EQ(palette.color(QPalette::Active, role), row.text);
    }
  }
}

TEST(ContrastStyle, AMenuHigherThanTheScreenIsOneColumnThatScrolls) {
  ContrastStyle style;
  QMenu menu;
  menu.setStyle(&style);
  for (int i = 0; i < 500; ++i) menu.addAction("Alerted Zone " + QString::number(i));
  menu.popup({0, 0});
  EXPECT_EQ(menu.actionGeometry(menu.actions().back()).left(),
            menu.actionGeometry(menu.actions().front()).left());
}

}  // namespace
}  // namespace pallomir
