#pragma once

#include <filesystem>

#include "servicehost/transcript.h"

namespace pallomir::servicehost {

/// The commands to the service. They tell the user what they did; false when they could not do it.
bool Install(const std::filesystem::path& hostFolder, Transcript& transcript);
bool Start(Transcript& transcript);
bool Stop(Transcript& transcript);
bool Uninstall(Transcript& transcript);

}  // namespace pallomir::servicehost
