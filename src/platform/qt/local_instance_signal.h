#pragma once

#include <QString>
#include <filesystem>
#include <memory>
#include <string>

#include "base/trace.h"
#include "platform/instance_signal.h"

class QLocalServer;
class QLocalSocket;

namespace pallomir {

/// The signal as a local socket beside the mutex's file in the folder. One line goes over it: the window
/// handle and, where the desktop gave the second start one, the token that lets the first one come to the
/// front.
class LocalInstanceSignal : public InstanceSignal {
 public:
  LocalInstanceSignal(std::filesystem::path folder, std::string name, Trace& trace);
  ~LocalInstanceSignal() override;

  /// Only the owner of the mutex listens: a socket left by a killed one is taken away.
  void Listen() override;
  void Stop() override;
  /// Waits at most a second, also for a first instance that does nothing any more.
  void AskToRaise(std::int64_t windowHandle) override;

 private:
  QString SocketPath() const;
  void Serve();
  void ReadLine(QLocalSocket& socket);

  std::filesystem::path folder_;
  std::string name_;
  Trace& trace_;
  std::unique_ptr<QLocalServer> server_;
};

}  // namespace pallomir
