#pragma once

#include <QFrame>
#include <vector>

class QCheckBox;

namespace pallomir {

/// The status list that is shown while the map page builds its map. It lies over the main window and takes
/// neither keyboard nor mouse.
class formSplash : public QFrame {
 public:
  explicit formSplash(QWidget* owner);

  static constexpr int kStatusLines = 17;

  /// Ticks line 1..17.
  void Tick(int line);

  /// Shows the list in the middle of the owner.
  void ShowCentred();

 private:
  std::vector<QCheckBox*> lines_;
};

}  // namespace pallomir
