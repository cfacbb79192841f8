#pragma once

#include <QDBusConnection>
#include <QObject>
#include <map>
#include <optional>

#include "platform/notifier.h"

namespace pallomir {

/// Notifications by the service that desktops offer on the session bus (org.freedesktop.Notifications). The
/// bus is looked for when there is something to notify; none is started.
class BusNotifier : public QObject, public Notifier {
  Q_OBJECT

 public:
  BusNotifier() = default;
  /// On the bus at this address instead of the session's.
  explicit BusNotifier(const QString& address) : address_(address) {}
  ~BusNotifier() override;

  void Notify(const std::string& title, const std::string& text, std::function<void()> clicked) override;
  void Close() override;

 private:
  Q_SLOT void OnAction(uint id, const QString& action);
  Q_SLOT void OnClosed(uint id, uint reason);
  bool Connect();
  void Send(const QString& title, const QString& text, std::function<void()> clicked);

  QString address_;
  std::optional<QDBusConnection> bus_;
  bool isClosed_ = false;
  std::optional<bool> readsMarkup_;  // the service, as far as it has said
  std::map<uint, std::function<void()>> shown_;
};

}  // namespace pallomir
