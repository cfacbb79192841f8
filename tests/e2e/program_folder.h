#pragma once

#include <map>

#include "fakes/process.h"
#include "fakes/temporary_folder.h"
#include "settings/settings_store.h"

namespace pallomir::e2e {

/// The client's application folder, its settings and its home, in a folder of the test's own.
class ProgramFolder {
 public:
  /// The client of the station at `address`. A normal window of 900 by 600 with these settings, by their
  /// keys.
  ProgramFolder(const std::string& address, std::map<std::string, std::string> settings) {
    namespace fs = std::filesystem;
    for (const char* name : {"profile", "share/pallomir/Data", "config", "runtime"})
      fs::create_directories(Path() / name);
    fs::permissions(Path() / "runtime", fs::perms::owner_all);
    fs::copy(PALLOMIR_FOLDER, App(), fs::copy_options::recursive);
    fakes::WriteFile(App() / "deployment.ini",
                     "WebsiteServer=" + address + "\nWebSite=" + address + ":2480\n");
    settings.merge(std::map<std::string, std::string>{
        {"Demo Mode", "False"}, {"WindowState", "0"}, {"WindowPos_W", "900"}, {"WindowPos_H", "600"}});
    std::string lines;
    for (const auto& [key, value] : settings)
      lines += SettingsLine("pallomir browser~Startup~" + key, value) + "\r\n";
    fakes::WriteFile(Registry(), lines);
  }

  const std::filesystem::path& Path() const { return folder_.Path(); }
  std::filesystem::path App() const { return Path() / "app"; }
  std::filesystem::path Registry() const { return Path() / "share/pallomir/Registry.txt"; }
  std::filesystem::path Data() const { return Path() / "share/pallomir/Data"; }

 private:
  fakes::TemporaryFolder folder_;
};

}  // namespace pallomir::e2e
