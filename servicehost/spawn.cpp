#include "servicehost/spawn.h"

#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

#include <csignal>

namespace pallomir::servicehost {

pid_t Spawn(const std::vector<std::string>& command, int output, ProcessGroup group) {
  std::vector<char*> arguments;
  for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);

  posix_spawn_file_actions_t actions;
  ::posix_spawn_file_actions_init(&actions);
  ::posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  for (const int stream : {STDOUT_FILENO, STDERR_FILENO}) {
    if (output >= 0)
      ::posix_spawn_file_actions_adddup2(&actions, output, stream);
    else
      ::posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_WRONLY, 0);
  }
  ::posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);

  posix_spawnattr_t attributes;
  ::posix_spawnattr_init(&attributes);
  sigset_t none, all;
  ::sigemptyset(&none);
  ::sigfillset(&all);
  ::posix_spawnattr_setsigmask(&attributes, &none);
  ::posix_spawnattr_setsigdefault(&attributes, &all);
  const int groupFlag = group == ProcessGroup::kSession ? POSIX_SPAWN_SETSID : POSIX_SPAWN_SETPGROUP;
  ::posix_spawnattr_setflags(&attributes,
                             static_cast<short>(POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | groupFlag));

  pid_t process = -1;
  const int error =
      ::posix_spawnp(&process, arguments[0], &actions, &attributes, arguments.data(), ::environ);
  ::posix_spawnattr_destroy(&attributes);
  ::posix_spawn_file_actions_destroy(&actions);
  return error == 0 ? process : -error;
}

}  // namespace pallomir::servicehost
