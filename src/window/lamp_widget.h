#pragma once

#include <QWidget>

namespace pallomir {

enum class LampState { kQuiet, kGreen, kAmber, kRed };

/// `picLamp`: a small lamp whose colour and shape tell a state, and whose tool tip says it in words. Tab
/// reaches it, and shows the tool tip.
class Lamp : public QWidget {
 public:
  explicit Lamp(QWidget* parent);

  void Show(LampState state, const QString& text);
  LampState State() const { return state_; }

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  LampState state_ = LampState::kQuiet;
};

}  // namespace pallomir
