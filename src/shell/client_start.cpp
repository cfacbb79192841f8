#include <string>

#include "map/projection.h"
#include "shell/client.h"
#include "shell/instance_guard.h"
#include "shell/time_zone.h"

// The start-up sequence. Its order is what the user and the settings file see: keys enter the file as they
// are read, and messages come in the order of their causes.

namespace pallomir {

void Client::Load() {
  ports_.storage.registry.Save(kWindowHandleKey, std::to_string(ports_.desktop.window.Handle()));
  ports_.instance.signal.raiseWanted = [this] {
    ports_.trace.Line("another start asks for the window");
    if (loaded_) ports_.desktop.window.Activate();
    ports_.desktop.questions.BringForward();  // those of the start-up stand there before the window does
  };
  hold_.Listen();
  frame_.Restore();
  options_.Read();
  ports_.views.frame.ShowDemoMode(choices_.demoMode.Value());
  units_.Load(choices_.demoMode.Value());
  options_.ReadLists();
  SetTimeZone(localClock_, ports_.desktop.questions, [this] { ContinueLoad(); });
}

void Client::ContinueLoad() {
  if (closing_) return;
  EmptyTileFolders(FoldersOfTiles(ports_.storage.folders));
  pickers_.SetFirstWindow();
  ports_.views.boxes.ShowSplash();
  EnumerateMUs();
  CheckUnits();
}

void Client::CheckUnits() {
  if (units_.Book().enabledCount > 0) {
    feed_.Restart();
    ShowWindow();
    return;
  }
  units_.TellNoneDisplayed([this] {
    if (closing_) return;
    ShowWindow();
    units_.Edit();
  });
}

void Client::ShowWindow() {
  if (closing_) return;
  ports_.desktop.window.Show();
  ports_.views.frame.LayOut();
  map_.Open();
  CosLatTable();
  ports_.views.frame.ReturnFocus();
  for (Joint* joint : joints_) joint->Open();
  loaded_ = true;
  frame_.Open();
  pickers_.LostFocus(0);
  pickers_.LostFocus(1);
  ports_.views.frame.ReturnFocus();
  feed_.BeginTelling();
  focus_.Open();
  marks_.Open();
  timeline_.Timeline_Resize();
}

}  // namespace pallomir
