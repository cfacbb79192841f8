#pragma once

#include <QFrame>

namespace pallomir {

/// `pctKeyList`: the hot keys and what they do, in two columns over the map. It takes no keyboard.
class KeyListPicture : public QFrame {
 public:
  /// Hidden at first.
  explicit KeyListPicture(QWidget* owner);

  /// Shows the list in the owner's upper left corner, over everything else there.
  void ShowOverlay();
  void HideOverlay() { hide(); }
};

}  // namespace pallomir
