#include <cmath>
#include <string>

#include "base/number_format.h"
#include "commands/command_table.h"
#include "commands/hot_keys.h"
#include "commands/menus.h"
#include "shell/client.h"

// What the commands of menus and keys do.

namespace pallomir {

// What is not about the map page (commands/map_commands.h) has its handler here.
void Client::HandleCommands() {
  HandleViewCommands();
  HandleOptionCommands();
  HandleTimeCommands();
  const auto handle = [this](Command command, auto handler) { handlers_.Set(command, handler); };
  handle(Command::kFaqs, [this](int) { OpenFaqs(); });
  handle(Command::kAbout, [this](int) { ports_.views.boxes.ShowAbout(); });
  handle(Command::kExit, [this](int) { ports_.window.Close(); });
}

void Client::HandleViewCommands() {
  const auto handle = [this](Command command, auto handler) { handlers_.Set(command, handler); };
  handle(Command::kReload, [this](int) { MapReload(); });
  handle(Command::kFitAll, [this](int) { FitByUser(0); });
  handle(Command::kFitUnit, [this](int k) { FitByUser(static_cast<std::size_t>(k)); });
  handle(Command::kTimeline, [this](int) {
    ports_.view.ShowTimeline(Toggle(Command::kTimeline));
    MapReload();
  });
  handle(Command::kAllUnits, [this](int) { units_.ShowAll(); });
  handle(Command::kOnlyUnit, [this](int i) { units_.ShowOnly(static_cast<std::size_t>(i)); });
  handle(Command::kToggleUnit, [this](int i) { units_.Toggle(static_cast<std::size_t>(i)); });
}

void Client::HandleOptionCommands() {
  const auto handle = [this](Command command, auto handler) { handlers_.Set(command, handler); };
  handle(Command::kEditUnits, [this](int) { units_.Edit(); });
  handle(Command::kEditHotspots, [this](int) { EditHotspots(); });
  handle(Command::kChangeHotspotMode, [this](int) { ChangeHotspotMode(); });
  handle(Command::kEditSecureHotspots, [this](int) { EditSecureHotspots(); });
  handle(Command::kContactPoint, [this](int index) {
    Toggle(Command::kContactPoint, index);
    map_->Rebuild();
  });
  handle(Command::kStartupChoice, [this](int index) { ChooseStartup(index); });
  handle(Command::kUpdateChoice, [this](int index) { ChooseUpdate(index); });
  handle(Command::kUnitOfMeasureChoice, [this](int index) { ChooseUnitOfMeasure(index); });
  handle(Command::kPortBase, [this](int) { AskPortBase(); });
  handle(Command::kInstallServer, [this](int) { service_.Run(ServiceCommand::kInstall); });
  handle(Command::kStartServer, [this](int) { service_.Run(ServiceCommand::kStart); });
  handle(Command::kStopServer, [this](int) { service_.Run(ServiceCommand::kStop); });
  handle(Command::kUninstallServer, [this](int) { service_.Run(ServiceCommand::kUninstall); });
  handle(Command::kDemoMode, [this](int) { AskDemoMode(); });
}

void Client::HandleTimeCommands() {
  const auto handle = [this](Command command, auto handler) { handlers_.Set(command, handler); };
  handle(Command::kTimeBack, [this](int n) { return NavigateTo(MovedBy(pickers_.Window(), -n)); });
  handle(Command::kTimeForward, [this](int n) { return NavigateTo(MovedBy(pickers_.Window(), n)); });
  handle(Command::kTimeZoomIn, [this](int) { return NavigateTo(ZoomedIn(pickers_.Window())); });
  handle(Command::kTimeZoomOut, [this](int) { return NavigateTo(ZoomedOut(pickers_.Window())); });
  handle(Command::kCurrentDay, [this](int) { ReturnToCurrentDay(); });
}

bool Client::KeyDown(int modifiers, char key) {
  if (closing_ || pickers_.PickerFocusMask() != 0) return false;
  const auto given = FindKeyCommand(modifiers, key, static_cast<int>(units_.List().size()));
  if (!given) return false;
  const bool hasActed = handlers_.Run(given->command, given->number);
  if (given->command == Command::kTrackingData) {
    // Unlike the menu entry, the key takes pickers and title along.
    pickers_.ShowAll(menus_.At(Command::kTrackingData).checked);
    ShowPickers();
  }
  if (hasActed && IsBuilt(given->command)) ports_.beeper.Beep();
  return true;
}

void Client::MenuChosen(const MenuItem& item) {
  if (closing_) return;
  focus_.HoldOff(false);
  handlers_.Run(item.command, item.index);
}

bool Client::Toggle(Command command, int index) {
  MenuItem& item = menus_.At(command, index);
  return item.checked = !item.checked;
}

void Client::ChooseStartup(int index) {
  ChooseInMenu(menus_, Command::kStartupChoice, index, "On Startup: ");
  choices_.onStartup.Store(index);
}

void Client::ChooseUpdate(int index) {
  ChooseInMenu(menus_, Command::kUpdateChoice, index, "On Update: ");
  choices_.onUpdate.Store(index);
}

void Client::ChooseUnitOfMeasure(int index) {
  ChooseInMenu(menus_, Command::kUnitOfMeasureChoice, index, "Unit of Measure: ");
  choices_.unitOfMeasure.Store(index);
}

void Client::AskPortBase() {
  Question question;
  question.kind = Question::Kind::kInput;
  question.title = "Pallomir Port Selector";
  question.text =
      "Select the base port address you want to use for your UDP port(s). There is no need to change this "
      "from the "
      "default value unless a conflict occurs with the ports assigned by another application (may we suggest "
      "18801, "
      "28801 or 38801).";
  question.defaultText = std::to_string(choices_.portBase.Value());
  ports_.questions.Ask(question, [this](const Answer& answer) {
    if (answer.text.empty()) return;
    const double port = ParseNumber(answer.text).value_or(-1);
    if (port < 0 || port > 65535) return AskPortBase();
    choices_.portBase.Store(static_cast<int>(std::nearbyint(port)));  // half to even
    menus_.At(Command::kPortBase).caption = "Local Port Range Base = " + answer.text;
  });
}

}  // namespace pallomir
