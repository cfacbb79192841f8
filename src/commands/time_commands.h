#pragma once

#include "commands/command_handlers.h"
#include "timeline/picker_panel.h"

namespace pallomir {

/// The commands that load another time window. The panel outlives the handlers.
void HandleTimeCommands(CommandHandlers& handlers, PickerPanel& pickers);

}  // namespace pallomir
