#include <string>

#include "commands/hotspot_menus.h"
#include "dataserver/open_result.h"
#include "shell/client.h"
#include "shell/instance_guard.h"

// The Wi-Fi lists of the mobile units, the user's own Data Server, and the switch between normal and demo
// mode.

namespace pallomir {

void Client::ReadHotspots() {
  choices_.hotspots.hotspots.Read();
  choices_.hotspots.secureHotspots.Read();
  LoadSSIDs(menus_, choices_.hotspots.hotspots.Value());
  LoadSecureSSIDs(menus_, choices_.hotspots.secureHotspots.Value());
}

void Client::EditHotspots() { ports_.views.hotspots.EditHotspots(HotspotsFromMenu(menus_)); }

void Client::EditSecureHotspots() {
  ports_.views.hotspots.EditSecureHotspots(SecureHotspotsFromMenu(menus_));
}

void Client::ChangeHotspotMode() {
  std::string mode = choices_.hotspots.mode.Value();
  HotSpotsChange(menus_, mode, true);
  choices_.hotspots.mode.Store(mode);
}

void Client::HotspotsApplied(const std::vector<std::string>& ssids) {
  // A list that was not changed is not written: the stored text may be damaged behind what was shown of it.
  if (closing_ || ssids == HotspotsFromMenu(menus_)) return;
  choices_.hotspots.hotspots.Store(EncodeHotspots(ssids));
  LoadSSIDs(menus_, choices_.hotspots.hotspots.Value());
}

void Client::SecureHotspotsApplied(const std::vector<SecureHotspot>& hotspots) {
  if (closing_ || hotspots == SecureHotspotsFromMenu(menus_)) return;
  choices_.hotspots.secureHotspots.Store(EncodeSecureHotspots(hotspots));
  LoadSecureSSIDs(menus_, choices_.hotspots.secureHotspots.Value());
}

void Client::ServiceBusyChanged() {
  const bool isFree = !service_.IsBusy();
  for (const Command entry : {Command::kInstallServer, Command::kStartServer, Command::kStopServer,
                              Command::kUninstallServer, Command::kDemoMode})
    menus_.At(entry).enabled = isFree;
  if (!closing_) feed_.ShowLamp();
}

void Client::AskDemoMode() {
  Question question;
  question.kind = Question::Kind::kOkCancel;
  question.title = "Pallomir";
  question.text =
      std::string("Do you want to ") + (choices_.demoMode.Value() ? "exit" : "enter") +
      " Demo Mode?\r\nIf you do, then Pallomir Display will\r\n   exit and restart in the new mode.";
  ports_.questions.Ask(question, [this](const Answer& answer) {
    if (answer.yes && !closing_) SwitchDemoMode();
  });
}

// The new instance finds the mutex and the raise signal free. Where it can't be started this one goes on with
// the units that it has; the other mode is stored for the next start.
void Client::SwitchDemoMode() {
  MenuItem& entry = menus_.At(Command::kDemoMode);
  entry.checked = !entry.checked;
  frame_.Store();
  ports_.instanceSignal.Stop();
  isMutexReleased_ = true;
  ReleaseMutex([] {});
  choices_.demoMode.Store(entry.checked);
  // The new instance reads what is on the disk.
  const auto unsaved = ports_.settings.Flush();
  const Folders& folders = ports_.folders;
  const ProgramStart start =
      unsaved ? ProgramStart{}
              : ports_.programs.Start(folders.application / folders.executable, {}, folders.application);
  if (start.program) return ports_.window.Close();
  isMutexReleased_ = !ports_.mutex.Create(kInstanceMutex);
  if (isMutexReleased_) ports_.trace.Line("the mutex could not be taken again");
  ports_.instanceSignal.Listen();
  ports_.questions.Tell(
      unsaved.value_or("Error: " + std::string(OpenErrorMessage(OpenResultOf(start.error)))), "Run",
      Question::Icon::kError);
}

void Client::OpenFaqs() {
  if (!ports_.programs.OpenPage(FaqAddress()))
    ports_.trace.Line("no program to show " + FaqAddress() + " with");
}

}  // namespace pallomir
