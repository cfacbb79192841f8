#pragma once

#include <QFrame>

namespace pallomir {

/// `pctKeyList`: the hot keys and what they do, in two columns over the map. It takes no keyboard.
class KeyListPicture : public QFrame {
 public:
  /// Hidden at first.
  explicit KeyListPicture(QWidget* owner);

  /// Shows the list over everything else in its owner: in the corner that begins at `corner`, or as far above
  /// as it must for its whole height.
  void ShowOverlay(const QPoint& corner = {});
  void HideOverlay() { hide(); }
};

}  // namespace pallomir
