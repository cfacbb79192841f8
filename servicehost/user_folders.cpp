#include "servicehost/user_folders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

namespace pallomir::servicehost {
namespace {

namespace fs = std::filesystem;

// A relative folder would be another one from every working folder.
fs::path AbsoluteVariable(const char* name) {
  const char* value = std::getenv(name);
  const fs::path folder = value != nullptr ? value : "";
  return folder.is_absolute() ? folder : fs::path();
}

fs::path BaseFolder(const char* variable, const char* belowHome) {
  const fs::path folder = AbsoluteVariable(variable);
  return folder.empty() ? HomeFolder() / belowHome : folder;
}

}  // namespace

fs::path HomeFolder() {
  const fs::path home = AbsoluteVariable("HOME");
  if (!home.empty()) return home;
  const passwd* user = ::getpwuid(::getuid());
  return user != nullptr ? user->pw_dir : "/";
}

fs::path ServiceFolder() { return BaseFolder("XDG_DATA_HOME", ".local/share") / "pallomir-station"; }

fs::path UnitFolder() { return BaseFolder("XDG_CONFIG_HOME", ".config") / "systemd/user"; }

fs::path ProgramFile() {
  std::error_code ignored;
  return fs::read_symlink("/proc/self/exe", ignored);
}

std::string UserName() {
  const passwd* user = ::getpwuid(::getuid());
  return user != nullptr ? user->pw_name : std::to_string(::getuid());
}

}  // namespace pallomir::servicehost
