#include "platform/qt/wrapped_label.h"

#include <QFontMetrics>
#include <QLabel>
#include <QScreen>
#include <algorithm>

namespace pallomir {

QString Breakable(const QString& text, const QWidget& widget, int width) {
  constexpr char16_t kBreak = u'\u200B';
  const QFontMetrics metrics = widget.fontMetrics();
  QString broken;
  int reached = 0;  // by the word so far, pixels
  for (const QChar character : text) {
    const int advance = metrics.horizontalAdvance(character);
    reached = character.isSpace() ? 0 : reached + advance;
    if (reached > width) {
      broken += QChar(kBreak);
      reached = advance;
    }
    broken += character;
  }
  return broken;
}

QSize WrapWithinScreen(QLabel& label, const QString& text, const QString& asShown) {
  const int widest = label.window()->screen()->availableGeometry().width() / 2;
  const QString plain = Breakable(text, label, widest);
  const QSize room =
      label.fontMetrics().boundingRect(QRect(0, 0, widest, 0), Qt::TextWordWrap, plain).size() + QSize(2, 0);
  label.setText(asShown.isNull() ? plain : asShown);
  label.setWordWrap(true);
  label.setMinimumWidth(std::min(room.width(), widest));
  return {label.minimumWidth(), room.height()};
}

}  // namespace pallomir
