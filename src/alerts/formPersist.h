#pragma once

#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <optional>

namespace pallomir {

/// The window that stops a persistent alert: any key or a press of the mouse closes it. It takes the keyboard
/// back from the main window, and from nothing else.
class formPersist : public QWidget {
 public:
  /// It shows over the middle of `owner`, the main window, but is no child of it: a message that keeps input
  /// from the main window would keep it from this one too. `owner` outlives it.
  explicit formPersist(QWidget* owner);
  ~formPersist() override;

  std::function<void()> closed;  ///< by the user

  void ShowOver();
  void HideAway();
  void Raise();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool MayTakeKeyboard() const;
  void TakeKeyboard();
  void StandBelow(const QRect& dialog);
  void GiveKeyboardOn();
  bool IsOfHeldKey(QEvent* event);
  void ForgetHeldKey();

  QWidget* owner_;
  QTimer taking_;               // a moment after the main window got the keyboard
  QPointer<QWidget> popup_;     // that had to be waited for
  std::optional<int> heldKey_;  // closed this window and has not been released
  QTimer releasing_;            // it was, unless a press follows
};

}  // namespace pallomir
