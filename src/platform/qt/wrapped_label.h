#pragma once

#include <QSize>
#include <QString>

class QLabel;
class QWidget;

namespace pallomir {

/// The text with places to break it inside the words that are wider than `width` pixels in the widget's font.
QString Breakable(const QString& text, const QWidget& widget, int width);

/// Shows `text` in the label, wrapped, with room for all of it: as wide as its longest line, and no wider
/// than half of the screen. `asShown` is what the label gets where that is another form of the text. Gives
/// the room.
QSize WrapWithinScreen(QLabel& label, const QString& text, const QString& asShown = {});

}  // namespace pallomir
