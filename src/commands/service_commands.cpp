#include "commands/service_commands.h"

namespace pallomir {

void HandleServiceCommands(CommandHandlers& handlers, ServiceControl& service) {
  const auto handle = [&](Command command, ServiceCommand done) {
    handlers.Set(command, [&service, done](int) { service.Run(done); });
  };
  handle(Command::kInstallServer, ServiceCommand::kInstall);
  handle(Command::kStartServer, ServiceCommand::kStart);
  handle(Command::kStopServer, ServiceCommand::kStop);
  handle(Command::kUninstallServer, ServiceCommand::kUninstall);
}

void ShowServiceBusy(MenuModel& menus, bool isBusy) {
  for (const Command entry : {Command::kInstallServer, Command::kStartServer, Command::kStopServer,
                              Command::kUninstallServer, Command::kDemoMode})
    menus.At(entry).enabled = !isBusy;
}

}  // namespace pallomir
