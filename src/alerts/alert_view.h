#pragma once

#include <functional>
#include <string>

namespace pallomir {

/// What is seen of the alerts.
class AlertView {
 public:
  virtual ~AlertView() = default;

  /// The window that a persistent alert is stopped with. `closed` is called, from the event loop, when the
  /// user closes it, not when it is hidden.
  virtual void ShowPersist(std::function<void()> closed) = 0;
  virtual void HidePersist() = 0;
  /// The main window has come to the front: the open window goes before it.
  virtual void RaisePersist() = 0;

  /// Whether the alerts are muted, and what is said of it.
  virtual void ShowMute(bool isMuted, const std::string& text) = 0;
};

}  // namespace pallomir
