#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pallomir::servicehost {

/// One word of a command in a unit file: it arrives as it stands, whatever it holds.
std::string UnitWord(std::string_view word);

/// The unit of a user service that runs the command and restarts it when it fails.
std::string UnitText(const std::vector<std::string>& command);

}  // namespace pallomir::servicehost
