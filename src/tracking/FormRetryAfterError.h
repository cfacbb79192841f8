#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <functional>

class QHideEvent;
class QLabel;
class QProgressBar;

namespace pallomir {

/// The retry dialog: the message of a network failure, a countdown, and what to do about it. Escape and
/// closing it are "Stop Retrying". While it is there its owner takes no input. It is not modal
/// (see OwnerBlock).
class FormRetryAfterError : public QDialog {
 public:
  explicit FormRetryAfterError(QWidget* owner);

  std::function<void()> retryNow;
  std::function<void()> stopRetrying;
  std::function<void()> quit;
  std::function<void()> openPage;  ///< the address in the message was chosen

  /// An address in the message is a link.
  void SetMessage(const QString& message);
  /// Shows it in the middle of its owner. It takes the keyboard only when told so: a dialog that opens by
  /// itself must not get the keys that the user types elsewhere. Without it, it lies over everything the
  /// first time; when it comes again soon, the same trouble goes on, and it stays behind what the user works
  /// with.
  void ShowOver(bool takesKeyboard);
  void SetProgress(int bar, const QString& label);

  void reject() override;

 protected:
  void hideEvent(QHideEvent* event) override;

 private:
  QLabel* message_;
  QProgressBar* bar_;
  QLabel* countdown_;
  QElapsedTimer sinceHidden_;
};

}  // namespace pallomir
