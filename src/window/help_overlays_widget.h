#pragma once

#include <QPoint>

#include "window/pointer_approach.h"

class QWidget;

namespace pallomir {

class KeyListPicture;
class KeyboardPicture;

/// The two helps. They begin in the map's corner and may lie over what is below the map as well, in the
/// window that the map is in. The pointer over the map hides them, but not while it is on its way from the
/// button to the help.
class HelpOverlays {
 public:
  explicit HelpOverlays(QWidget* mapArea);

  void ShowKeyboard();
  void ShowKeyList();
  void ReadKeyboard();  ///< gives the keyboard to the picture's keys
  void Hide();
  bool IsShown() const;
  void Raise();
  /// Where the pointer was seen over the map.
  void PointerOverMap(const QPoint& at);
  QWidget* Keyboard() const;

 private:
  QWidget* mapArea_;
  KeyboardPicture* pctKeyboard_;
  KeyListPicture* pctKeyList_;
  PointerApproach approach_;
};

}  // namespace pallomir
