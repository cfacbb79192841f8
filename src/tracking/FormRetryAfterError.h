#pragma once

#include <QDialog>
#include <functional>

class QLabel;
class QProgressBar;

namespace pallomir {

/// The retry dialog: the message of a network failure, a countdown, and what to do about it. Escape and
/// closing it are "Stop Retrying".
class FormRetryAfterError : public QDialog {
 public:
  explicit FormRetryAfterError(QWidget* owner);

  std::function<void()> retryNow;
  std::function<void()> stopRetrying;
  std::function<void()> quit;

  void SetMessage(const QString& message);
  void SetProgress(int bar, const QString& label);

  void reject() override;

 private:
  QLabel* message_;
  QProgressBar* bar_;
  QLabel* countdown_;
};

}  // namespace pallomir
