#include <algorithm>
#include <cmath>
#include <string>

#include "base/number_format.h"
#include "map/projection.h"
#include "shell/client.h"
#include "shell/instance_guard.h"

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
  choiceCommands_.ReadFirst();
  choices_.Read();
  hotspots_.HotSpotsChange(false);
  choiceCommands_.ShowOthers();
  menus_.At(Command::kDemoMode).checked = choices_.demoMode.Value();
  ports_.views.frame.ShowDemoMode(choices_.demoMode.Value());
  units_.Load(choices_.demoMode.Value());
  hotspots_.ReadLists();
  ReadZone();
}

void Client::ReadZone() {
  if (localClock_.TakeSystemZone()) return ContinueLoad();
  Question question;
  question.kind = Question::Kind::kInput;
  question.title = "Pallomir";
  question.text = "Enter timezone offset in hours (example shown for Eastern Standard Time):";
  question.defaultText = "5.0";
  ports_.desktop.questions.Ask(question, [this](const Answer& answer) {
    // No zone lies farther out than 14 hours; what is no number counts as Greenwich.
    const double hours = std::clamp(ParseNumber(answer.text).value_or(0), -14.0, 14.0);
    localClock_.SetOffset(static_cast<int>(std::lround(hours * 60)));
    ContinueLoad();
  });
}

void Client::ContinueLoad() {
  if (closing_) return;
  PrepareFolders();
  pickers_.SetFirstWindow();
  ports_.views.boxes.ShowSplash();
  EnumerateMUs();
  CheckUnits();
}

void Client::PrepareFolders() {
  const TileFolders folders = FoldersOfTiles(ports_.storage.folders);
  const std::filesystem::path parent = folders.track.parent_path();
  for (const auto& folder : {parent.parent_path(), parent, folders.track, folders.zone}) MakeFolder(folder);
  DeleteFiles(folders.track);
  DeleteFiles(folders.zone);
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
  map_->Open();
  CosLatTable();
  ports_.views.frame.ReturnFocus();
  zones_.Open(ports_.storage.folders, choices_.demoMode.Value());
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
