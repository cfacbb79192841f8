#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "base/trace.h"
#include "platform/event_loop.h"
#include "platform/program_starter.h"
#include "ui/question_queue.h"

namespace pallomir {

enum class ServiceCommand { kInstall, kStart, kStop, kUninstall };

/// Controls the user's own Data Server through the service host, the program "ServiceName/ServiceName" in the
/// application folder: asks where a command needs it, runs the host, waits for its end without holding
/// anything up, and shows the transcript. One command at a time; a further one is ignored meanwhile.
class ServiceControl {
 public:
  ServiceControl(ProgramStarter& starter, EventLoop& loop, QuestionQueue& questions, Trace& trace,
                 const std::filesystem::path& applicationFolder);
  ~ServiceControl();

  /// A command begins (with the question, where there is one) or is through, or its note has changed.
  std::function<void()> busyChanged;

  void Run(ServiceCommand command);
  bool IsBusy() const { return command_ != nullptr; }

  /// The application is closing: the wait ends, and nothing is shown any more.
  void Close();

  /// What the last command has to say besides its box, for a tool tip; empty when there is nothing.
  const std::string& Note() const { return note_; }

 private:
  struct Command;
  static const Command& CommandOf(ServiceCommand command);

  void StartHost();
  void Poll();
  void Finish(const std::string& message);
  void Leave(const std::string& note);
  std::string Transcript() const;

  ProgramStarter& starter_;
  QuestionQueue& questions_;
  Trace& trace_;
  std::filesystem::path hostFolder_;
  std::unique_ptr<Timer> poll_;
  const Command* command_ = nullptr;  // the one that is being done
  std::unique_ptr<StartedProgram> host_;
  int pollCount_ = 0;
  bool closed_ = false;
  std::string note_;
};

}  // namespace pallomir
