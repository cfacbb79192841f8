#include "window/live_windows_widget.h"

#include <utility>

#include "window/caption_line_widget.h"
#include "window/formMain.h"
#include "window/live_button_widget.h"

namespace pallomir {

LiveWindows::LiveWindows(formMain& window) {
  auto* line = static_cast<CaptionLine*>(window.findChild<QWidget*>("captionLine"));
  button_ = new LiveButton(line);
  line->AddState(button_);
  QObject::connect(button_, &QPushButton::clicked, button_, [this] {
    if (const auto chosen = chosen_) chosen();  // a copy: what it does may show another state
  });
}

void LiveWindows::ShowLive(const std::string& word, const std::string& tip, std::function<void()> chosen) {
  chosen_ = std::move(chosen);
  if (button_) button_->ShowState(QString::fromStdString(word), QString::fromStdString(tip));
}

}  // namespace pallomir
