#include "platform/qt/bus_notifier.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFileInfo>
#include <utility>

namespace pallomir {
namespace {

constexpr char kService[] = "org.freedesktop.Notifications";
constexpr char kPath[] = "/org/freedesktop/Notifications";
constexpr std::size_t kMostShown = 100;  // whose clicks are waited for

QDBusMessage Call(const char* method) {
  return QDBusMessage::createMethodCall(kService, kPath, kService, method);
}

// Else the library starts a bus of its own where there is none.
bool HasSessionBus() {
  if (!qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")) return true;
  return QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + "/bus");
}

QString ConnectionName(const void* owner) {
  return QString("pallomir-notices-%1").arg(reinterpret_cast<quintptr>(owner));
}

}  // namespace

BusNotifier::~BusNotifier() {
  if (bus_) QDBusConnection::disconnectFromBus(ConnectionName(this));
}

bool BusNotifier::Connect() {
  if (bus_) return bus_->isConnected();
  if (address_.isEmpty() && !HasSessionBus()) return false;
  const QString name = ConnectionName(this);
  bus_ = address_.isEmpty() ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, name)
                            : QDBusConnection::connectToBus(address_, name);
  if (!bus_->isConnected()) return false;
  bus_->connect(kService, kPath, kService, "ActionInvoked", this, SLOT(OnAction(uint, QString)));
  bus_->connect(kService, kPath, kService, "NotificationClosed", this, SLOT(OnClosed(uint, uint)));
  return true;
}

// Some services read the text as markup; they say so when they are asked, before the first notification.
void BusNotifier::Notify(const std::string& title, const std::string& text, std::function<void()> clicked) {
  if (isClosed_ || !Connect()) return;
  const QString head = QString::fromStdString(title), body = QString::fromStdString(text);
  if (readsMarkup_) return Send(head, *readsMarkup_ ? body.toHtmlEscaped() : body, std::move(clicked));
  auto* watcher = new QDBusPendingCallWatcher(bus_->asyncCall(Call("GetCapabilities")), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [=, this, clicked = std::move(clicked)] {
    watcher->deleteLater();
    const QDBusPendingReply<QStringList> reply = *watcher;
    if (reply.isError() || isClosed_) return;  // there is no such service
    readsMarkup_ = reply.value().contains("body-markup");
    Send(head, *readsMarkup_ ? body.toHtmlEscaped() : body, clicked);
  });
}

void BusNotifier::Send(const QString& title, const QString& text, std::function<void()> clicked) {
  QDBusMessage call = Call("Notify");
  call << QString("Pallomir") << uint(0) << QString() << title << text
       << QStringList{"default", "Show on the map"} << QVariantMap() << -1;
  auto* watcher = new QDBusPendingCallWatcher(bus_->asyncCall(call), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [=, this, clicked = std::move(clicked)] {
    watcher->deleteLater();
    const QDBusPendingReply<uint> reply = *watcher;
    if (reply.isError()) return readsMarkup_.reset();  // the service may have gone, and another one come
    if (shown_.size() >= kMostShown) shown_.erase(shown_.begin());
    shown_[reply.value()] = clicked;
  });
}

void BusNotifier::OnAction(uint id, const QString& /*action*/) {
  if (isClosed_) return;
  if (auto found = shown_.extract(id)) found.mapped()();
}

void BusNotifier::OnClosed(uint id, uint /*reason*/) { shown_.erase(id); }

void BusNotifier::Close() {
  isClosed_ = true;
  shown_.clear();
}

}  // namespace pallomir
