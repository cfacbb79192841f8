#pragma once

#include <QPushButton>

namespace pallomir {

/// Says in the caption line that points come live, or that they wait; hidden while nothing is live. A click
/// takes no focus.
class LiveButton : public QPushButton {
 public:
  explicit LiveButton(QWidget* parent);

  void ShowState(const QString& word, const QString& tip);
};

}  // namespace pallomir
