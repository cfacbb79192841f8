#pragma once

#include "commands/command_handlers.h"
#include "dataserver/service_control.h"

namespace pallomir {

/// What the entries of the user's own Data Server do.
void HandleServiceCommands(CommandHandlers& handlers, ServiceControl& service);

/// While a command is being done, its entries and the demo switch wait.
void ShowServiceBusy(MenuModel& menus, bool isBusy);

}  // namespace pallomir
