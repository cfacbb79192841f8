#pragma once

#include <QDialog>
#include <functional>

class QLabel;
class QProgressBar;

namespace pallomir {

/// How far long work is, with a button that cancels it. Modeless: the map can be used meanwhile.
class ZoneProgress : public QDialog {
 public:
  explicit ZoneProgress(QWidget* owner);

  /// `percent` below 0: nobody knows.
  void Show(const QString& text, int percent);

  /// By the button, by Escape, or by closing the window.
  std::function<void()> cancelled;

 protected:
  void reject() override;

 private:
  QLabel* text_;
  QProgressBar* bar_;
};

}  // namespace pallomir
