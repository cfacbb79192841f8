#pragma once

class QWidget;

namespace pallomir {

/// From now on the widget shows its tool tip also when Tab brings the keyboard to it: for what has a picture
/// in place of a text.
void ShowTipByKeyboard(QWidget* widget);

}  // namespace pallomir
