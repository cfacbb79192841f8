#include <string>

#include "commands/command_table.h"
#include "commands/hot_keys.h"
#include "commands/menus.h"
#include "commands/time_commands.h"
#include "commands/unit_menu.h"
#include "shell/client.h"

// What the commands of menus and keys do.

namespace pallomir {

// What concerns several rooms has its handler here, the rest with its room.
void Client::HandleCommands() {
  HandleViewCommands();
  HandleTimeCommands(handlers_, pickers_);
  const auto handle = [this](Command command, auto handler) { handlers_.Set(command, handler); };
  handle(Command::kFaqs, [this](int) {
    const std::string address = ports_.deployment.FaqAddress();
    if (!ports_.desktop.programs.OpenPage(address))
      ports_.trace.Line("no program to show " + address + " with");
  });
  handle(Command::kAbout, [this](int) { ports_.views.boxes.ShowAbout(); });
  handle(Command::kExit, [this](int) { ports_.desktop.window.Close(); });
}

void Client::HandleViewCommands() {
  const auto handle = [this](Command command, auto handler) { handlers_.Set(command, handler); };
  handle(Command::kReload, [this](int) { MapReload(); });
  handle(Command::kFitAll, [this](int) { FitByUser(0); });
  handle(Command::kFitUnit, [this](int k) { FitByUser(static_cast<std::size_t>(k)); });
  handle(Command::kTimeline, [this](int) {
    bool& isShown = menus_.At(Command::kTimeline).checked;
    ports_.views.timeline.ShowTimeline(isShown = !isShown);
    MapReload();
  });
  JoinUnits(menus_, handlers_, units_);
}

bool Client::KeyDown(int modifiers, char key) {
  if (closing_ || pickers_.IsEdited()) return false;
  if (zones_.IsDrawing() && !focus_.IsHeldOff()) {
    if (const auto drawing = FindDrawingCommand(modifiers, key))
      return handlers_.Run(drawing->command, drawing->number);
  }
  const auto given = FindKeyCommand(modifiers, key, static_cast<int>(units_.List().size()));
  if (!given) return false;
  const bool hasActed = handlers_.Run(given->command, given->number);
  if (given->command == Command::kTrackingData) {
    // Unlike the menu entry, the key takes pickers and title along.
    pickers_.ShowAll(menus_.At(Command::kTrackingData).checked);
  }
  if (hasActed && IsBuilt(given->command)) ports_.desktop.beeper.Beep();
  // It means something to others too.
  return hasActed || given->command != Command::kCloseTable;
}

void Client::MenuButtonClicked() {
  zones_.OfferNone();
  mapCommands_.MenuButtonClicked();
}

void Client::MenuChosen(const MenuItem& item) {
  if (closing_) return;
  focus_.HoldOff(false);
  handlers_.Run(item.command, item.index);
}

}  // namespace pallomir
