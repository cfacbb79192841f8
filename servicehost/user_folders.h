#pragma once

#include <filesystem>
#include <string>

namespace pallomir::servicehost {

/// The user's home; "/" when even the user database knows none.
std::filesystem::path HomeFolder();

/// $XDG_DATA_HOME/pallomir-station, else below ~/.local/share: what the service remembers.
std::filesystem::path ServiceFolder();

/// $XDG_CONFIG_HOME/systemd/user, else below ~/.config: where systemd looks for the user's units.
std::filesystem::path UnitFolder();

/// This program itself.
std::filesystem::path ProgramFile();

std::string UserName();

}  // namespace pallomir::servicehost
