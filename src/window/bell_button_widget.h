#pragma once

#include <QWidget>
#include <cstddef>
#include <functional>

class QLabel;

namespace pallomir {

class IconButton;

/// Says in the caption line how many alerts nobody has seen, and opens the journal. Without any it hides.
class BellButton : public QWidget {
 public:
  explicit BellButton(QWidget* parent);

  std::function<void()> chosen;

  void ShowCount(std::size_t count);

 private:
  IconButton* pctBell_;
  QLabel* lblBell_;
};

}  // namespace pallomir
