#include "platform/qt/detached_starter.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDesktopServices>
#include <QUrl>

namespace pallomir {
namespace {

// A child that nobody asks about any more stays in the process table only until the client ends.
class ChildProcess : public StartedProgram {
 public:
  explicit ChildProcess(pid_t id) : id_(id) {}

  std::int64_t Id() const override { return id_; }

  bool IsRunning() override {
    int status = 0;
    if (!isRunning_) return false;
    const pid_t ended = ::waitpid(id_, &status, WNOHANG);
    if (ended == 0) return true;
    isRunning_ = false;
    // Without a status the child was not ours to wait for; it counts as failed.
    exitCode_ = ended != id_          ? 255
                : WIFEXITED(status)   ? WEXITSTATUS(status)
                : WIFSIGNALED(status) ? 128 + WTERMSIG(status)
                                      : 255;
    return false;
  }

  int ExitCode() const override { return exitCode_; }

 private:
  pid_t id_;
  bool isRunning_ = true;
  int exitCode_ = 0;
};

/// What the child does before it becomes the program.
class SpawnPlan {
 public:
  explicit SpawnPlan(const std::string& workingFolder) {
    ::posix_spawn_file_actions_init(&actions_);
    ::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    ::posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    ::posix_spawn_file_actions_adddup2(&actions_, STDOUT_FILENO, STDERR_FILENO);
    ::posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
    ::posix_spawn_file_actions_addchdir_np(&actions_, workingFolder.c_str());
    ::posix_spawnattr_init(&attributes_);
    ::posix_spawnattr_setflags(&attributes_,
                               POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    sigset_t chosen;
    ::sigemptyset(&chosen);
    ::posix_spawnattr_setsigmask(&attributes_, &chosen);
    ::sigaddset(&chosen, SIGPIPE);
    ::sigaddset(&chosen, SIGCHLD);
    ::posix_spawnattr_setsigdefault(&attributes_, &chosen);
  }
  ~SpawnPlan() {
    ::posix_spawn_file_actions_destroy(&actions_);
    ::posix_spawnattr_destroy(&attributes_);
  }
  SpawnPlan(const SpawnPlan&) = delete;
  SpawnPlan& operator=(const SpawnPlan&) = delete;

  const posix_spawn_file_actions_t* Actions() const { return &actions_; }
  const posix_spawnattr_t* Attributes() const { return &attributes_; }

 private:
  posix_spawn_file_actions_t actions_;
  posix_spawnattr_t attributes_;
};

}  // namespace

ProgramStart DetachedStarter::Start(const std::filesystem::path& program,
                                    const std::vector<std::string>& arguments,
                                    const std::filesystem::path& workingFolder) {
  std::string path = program.string();
  std::vector<std::string> texts = arguments;
  std::vector<char*> pointers{path.data()};
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  const SpawnPlan plan(workingFolder.string());
  pid_t id = 0;
  const int error =
      ::posix_spawn(&id, path.c_str(), plan.Actions(), plan.Attributes(), pointers.data(), environ);
  if (error != 0) return {error, nullptr};
  return {0, std::make_unique<ChildProcess>(id)};
}

bool DetachedStarter::OpenPage(const std::string& address) {
  return QDesktopServices::openUrl(QUrl(QString::fromStdString(address)));
}

}  // namespace pallomir
