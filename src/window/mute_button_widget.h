#pragma once

#include <QWidget>
#include <functional>

class QLabel;

namespace pallomir {

class IconButton;

/// Says in the caption line whether alerts are heard, and opens the menu that mutes them.
class MuteButton : public QWidget {
 public:
  explicit MuteButton(QWidget* parent);

  std::function<void()> chosen;

  /// `text` says for how long; empty while alerts are heard.
  void ShowMute(bool isMuted, const QString& text);

 private:
  IconButton* pctMute_;
  QLabel* lblMute_;
};

}  // namespace pallomir
