#pragma once

#include <QLabel>

namespace pallomir {

/// Tells beside the pointer in which zone it rests: a child of the main window that takes neither focus nor
/// clicks.
class ZonePathTip : public QLabel {
 public:
  explicit ZonePathTip(QWidget* mainWindow);

  /// Shows the text beside the pointer, inside the window.
  void ShowText(const QString& text);
};

}  // namespace pallomir
