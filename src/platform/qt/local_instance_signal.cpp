#include "platform/qt/local_instance_signal.h"

#include <QDeadlineTimer>
#include <QLocalServer>
#include <QLocalSocket>
#include <QTimer>
#include <utility>

#include "platform/qt/shared_file.h"

namespace pallomir {
namespace {

constexpr int kPatienceMilliseconds = 1000;
constexpr qint64 kLongestLine = 1024;
constexpr char kTokenVariable[] = "XDG_ACTIVATION_TOKEN";

}  // namespace

LocalInstanceSignal::LocalInstanceSignal(std::filesystem::path folder, std::string name, Trace& trace)
    : folder_(std::move(folder)), name_(std::move(name)), trace_(trace) {}

LocalInstanceSignal::~LocalInstanceSignal() = default;

QString LocalInstanceSignal::SocketPath() const {
  return QString::fromStdString(SharedFile(folder_, name_, ".socket", kLongestSocketPath).string());
}

void LocalInstanceSignal::Listen() {
  const QString path = SocketPath();
  QLocalServer::removeServer(path);
  server_ = std::make_unique<QLocalServer>();
  server_->setSocketOptions(QLocalServer::UserAccessOption);
  QObject::connect(server_.get(), &QLocalServer::newConnection, server_.get(), [this] { Serve(); });
  if (!server_->listen(path))
    trace_.Line("a second start can't raise this one: " + server_->errorString().toStdString());
}

void LocalInstanceSignal::Serve() {
  while (QLocalSocket* socket = server_->nextPendingConnection()) {
    socket->setReadBufferSize(kLongestLine);
    const auto read = [this, socket] { ReadLine(*socket); };
    // Queued before the end of the connection is, so that a second start may leave at once.
    QObject::connect(socket, &QLocalSocket::readyRead, socket, read, Qt::QueuedConnection);
    if (socket->bytesAvailable() > 0) QMetaObject::invokeMethod(socket, read, Qt::QueuedConnection);
    QObject::connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    QTimer::singleShot(kPatienceMilliseconds, socket, &QLocalSocket::abort);
  }
}

void LocalInstanceSignal::ReadLine(QLocalSocket& socket) {
  if (!socket.canReadLine()) return;
  const QList<QByteArray> words = socket.readLine(kLongestLine).trimmed().split(' ');
  // The window system's part of Qt takes the token from here when the window is activated.
  if (words.size() > 1) qputenv(kTokenVariable, words[1]);
  const auto call = raiseWanted;
  if (call) call();
}

void LocalInstanceSignal::Stop() { server_.reset(); }

void LocalInstanceSignal::AskToRaise(std::int64_t windowHandle) {
  const QDeadlineTimer deadline(kPatienceMilliseconds);
  QByteArray line = QByteArray::number(static_cast<qlonglong>(windowHandle));
  const QByteArray token = qgetenv(kTokenVariable);
  if (!token.isEmpty() && token.size() < kLongestLine / 2 && !token.contains(' ')) line += ' ' + token;

  QLocalSocket socket;
  socket.connectToServer(SocketPath());
  if (!socket.waitForConnected(static_cast<int>(deadline.remainingTime()))) {
    trace_.Line("the first instance does not listen: " + socket.errorString().toStdString());
    return;
  }
  socket.write(line + '\n');
  while (socket.bytesToWrite() > 0 && !deadline.hasExpired()) {
    if (!socket.waitForBytesWritten(static_cast<int>(deadline.remainingTime()))) break;
  }
}

}  // namespace pallomir
