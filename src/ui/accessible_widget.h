#pragma once

#include <QAccessible>

class QWidget;

namespace pallomir {

/// What assistive programs are told of a widget for which Qt has no words of its own.
struct AccessibleTraits {
  QAccessible::Role role = QAccessible::NoRole;
  /// Arrow keys bring the focus to it although Tab passes it by.
  bool isReachable = false;
  /// A button that opens a menu.
  bool opensMenu = false;
};

/// To be called while the widget is made: what was told of it before goes.
void SetAccessible(QWidget* widget, const AccessibleTraits& traits);

}  // namespace pallomir
