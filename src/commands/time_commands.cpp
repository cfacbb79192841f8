#include "commands/time_commands.h"

namespace pallomir {

void HandleTimeCommands(CommandHandlers& handlers, PickerPanel& pickers) {
  handlers.Set(Command::kTimeBack, [&pickers](int periods) { return pickers.MoveBy(-periods); });
  handlers.Set(Command::kTimeForward, [&pickers](int periods) { return pickers.MoveBy(periods); });
  handlers.Set(Command::kTimeZoomIn, [&pickers](int) { return pickers.ZoomIn(); });
  handlers.Set(Command::kTimeZoomOut, [&pickers](int) { return pickers.ZoomOut(); });
  handlers.Set(Command::kCurrentDay, [&pickers](int) { pickers.ReturnToCurrentDay(); });
}

}  // namespace pallomir
