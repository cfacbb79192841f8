#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <iostream>
#include <string>
#include <vector>

#include "servicehost/command_lock.h"
#include "servicehost/commands.h"
#include "servicehost/installation.h"
#include "servicehost/service_manager.h"
#include "servicehost/supervisor.h"
#include "servicehost/user_folders.h"

namespace pallomir::servicehost {
namespace {

enum ExitCode : int { kDone = 0, kFailed = 1, kWrongArguments = 2 };

// Longer than any command takes that may be under way.
constexpr std::chrono::seconds kLockPatience{45};

constexpr char kUsage[] =
    "usage: ServiceName -i                   install the Data Server\n"
    "       ServiceName -u                   uninstall it\n"
    "       ServiceName -r Pallomir_Service  start it\n"
    "       ServiceName -k Pallomir_Service  stop it";

struct Command {
  std::vector<std::string> arguments;
  const char* title;
  bool (*run)(Transcript&);
};

const Command kCommands[] = {
    {{"-i"},
     "Install",
     [](Transcript& transcript) { return Install(ProgramFile().parent_path(), transcript); }},
    {{"-u"}, "Uninstall", Uninstall},
    {{"-r", kServiceName}, "Start", Start},
    {{"-k", kServiceName}, "Stop", Stop},
};

// A descriptor of ours in the place of a standard stream would get what is meant for that.
void OpenStandardStreams() {
  while (true) {
    const int fd = ::open("/dev/null", O_RDWR);
    if (fd < 0 || fd > STDERR_FILENO) {
      ::close(fd);
      return;
    }
  }
}

int RunSupervisor() {
  const auto installation = ReadInstallation();
  return installation ? Supervise(*installation) : kFailed;
}

int CantWrite(const Transcript& transcript, const std::error_code& error) {
  std::cerr << "ServiceName: can't write " << transcript.File().string() << ": " << error.message()
            << std::endl;
  return kFailed;
}

int RefuseArguments(const std::vector<std::string>& arguments, Transcript& transcript) {
  std::string given;
  for (const std::string& argument : arguments) given += " " + argument;
  transcript.Begin("Pallomir Data Server");
  transcript.Say("Nothing was done: this command is not known:" + given);
  transcript.Say(kUsage);
  if (const auto error = transcript.Finish()) return CantWrite(transcript, error);
  return kWrongArguments;
}

int Run(const Command& command, Transcript& transcript) {
  if (const auto error = transcript.Begin(std::string("Pallomir Data Server: ") + command.title))
    return CantWrite(transcript, error);
  std::error_code error;
  const auto lock = CommandLock::Take(LockFile(), kLockPatience, error);
  bool isDone = false;
  if (lock)
    isDone = command.run(transcript);
  else if (error == std::errc::timed_out)
    transcript.Say("Nothing was done: another command to the Data Server is still under way.");
  else
    transcript.Say("Nothing was done: " + LockFile().string() + " can't be written: " + error.message());
  if ((error = transcript.Finish())) return CantWrite(transcript, error);
  return isDone ? kDone : kFailed;
}

int Main(const std::vector<std::string>& arguments) {
  OpenStandardStreams();
  std::signal(SIGPIPE, SIG_IGN);  // a reader of our output that leaves must not end a command halfway
  if (arguments == std::vector<std::string>{kSupervise}) return RunSupervisor();
  Transcript transcript(ProgramFile().parent_path());
  for (const Command& command : kCommands)
    if (arguments == command.arguments) return Run(command, transcript);
  return RefuseArguments(arguments, transcript);
}

}  // namespace
}  // namespace pallomir::servicehost

int main(int argc, char** argv) { return pallomir::servicehost::Main({argv + 1, argv + argc}); }
