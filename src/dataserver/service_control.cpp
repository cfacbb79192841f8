#include "dataserver/service_control.h"

#include <fstream>
#include <system_error>
#include <utility>
#include <vector>

#include "base/whole_file.h"

namespace pallomir {
namespace {

constexpr char kHost[] = "ServiceName";
constexpr char kHostLog[] = "ServiceName.log";
constexpr char kInstallLog[] = "ServiceName.InstallLog";
constexpr char kService[] = "Pallomir_Service";
constexpr int kPollMilliseconds = 100;

// The host keeps its log to a page; what is longer than a book is no log.
constexpr std::size_t kMaxLogSize = std::size_t{1024} * 1024;

}  // namespace

struct ServiceControl::Command {
  std::vector<std::string> switches;
  const char* question;  ///< null: the command needs none
  const char* canceled;
  const char* message;   ///< before the transcript
  const char* underWay;  ///< for the tool tip
};

const ServiceControl::Command& ServiceControl::CommandOf(ServiceCommand command) {
  static const Command kCommands[] = {
      {{"-i"},
       "Are you sure you want to install the Data Server on this computer?\r\n\r\n"
       "CAUTION: If you have Pallomir installed on multiple computers,\r\n"
       "make sure that you have the Data Server installed on only ONE computer.",
       "Data Server installation canceled.",
       "Data Server installation finished... check transcript below to see if it was successful\r\n\r\n"
       "The Data Server will start the next time this computer is rebooted\r\n\r\n"
       "You can start the Data Server now by clicking on \"Start\" in the menu\r\n\r\n",
       "The Data Server is being installed"},
      {{"-r", kService}, nullptr, nullptr, "Data Server started\r\n\r\n", "The Data Server is being started"},
      {{"-k", kService},
       nullptr,
       nullptr,
       "Data Server stopped.\r\n\r\n",
       "The Data Server is being stopped"},
      {{"-u"},
       "Are you sure you want to uninstall the Data Server on this computer?",
       "Data Server uninstallation canceled.",
       "Data Server uninstalled:\r\n\r\n",
       "The Data Server is being uninstalled"},
  };
  return kCommands[static_cast<std::size_t>(command)];
}

ServiceControl::ServiceControl(ProgramStarter& starter, EventLoop& loop, QuestionQueue& questions,
                               Trace& trace, const std::filesystem::path& applicationFolder)
    : starter_(starter),
      questions_(questions),
      trace_(trace),
      hostFolder_(applicationFolder / kHost),
      poll_(loop.CreateTimer("ServicePoll", kPollMilliseconds, [this] { Poll(); })) {}

ServiceControl::~ServiceControl() = default;

void ServiceControl::Run(ServiceCommand command) {
  if (IsBusy() || closed_) return;
  command_ = &CommandOf(command);
  note_.clear();
  if (busyChanged) busyChanged();
  if (!command_->question) return StartHost();
  Question question;
  question.kind = Question::Kind::kOkCancel;
  question.icon = Question::Icon::kQuestion;
  question.title = "Pallomir";
  question.text = command_->question;
  questions_.Ask(question, [this](const Answer& answer) {
    if (closed_) return;
    if (answer.yes) return StartHost();
    Finish(command_->canceled);
  });
}

void ServiceControl::StartHost() {
  // Emptied in its place: another host may be writing to it.
  if (!std::ofstream(hostFolder_ / kHostLog, std::ios::trunc))
    trace_.Line(std::string(kHostLog) + " can't be emptied");
  ProgramStart start = starter_.Start(hostFolder_ / kHost, command_->switches, hostFolder_);
  if (!start.program) {
    const std::string reason = std::generic_category().message(start.error);
    trace_.Line("the service host " + (hostFolder_ / kHost).string() + " can't be started: " + reason);
    return Leave("The service host of the Data Server can't be started: " + reason);
  }
  host_ = std::move(start.program);
  note_ = command_->underWay;
  pollCount_ = 1;
  poll_->SetEnabled(true);
  if (busyChanged) busyChanged();
}

void ServiceControl::Poll() {
  if (host_->IsRunning()) {
    ++pollCount_;
    return;
  }
  Finish(command_->message + Transcript());
}

std::string ServiceControl::Transcript() const {
  std::error_code error;
  const auto log = ReadWholeFile(hostFolder_ / kInstallLog, kMaxLogSize, error);
  if (!log) trace_.Line(std::string(kInstallLog) + " can't be read: " + error.message());
  return "Count = " + std::to_string(pollCount_) + "\r\nhProcess = " + std::to_string(host_->Id()) +
         "\r\nExitCode = " + std::to_string(host_->ExitCode()) + "\r\n\r\n" + log.value_or("");
}

void ServiceControl::Finish(const std::string& message) {
  questions_.Tell(message);
  Leave("");
}

void ServiceControl::Leave(const std::string& note) {
  poll_->SetEnabled(false);
  host_.reset();
  command_ = nullptr;
  note_ = note;
  if (busyChanged) busyChanged();
}

void ServiceControl::Close() {
  closed_ = true;
  poll_->SetEnabled(false);
}

}  // namespace pallomir
