#include <algorithm>
#include <cmath>
#include <string>

#include "base/number_format.h"
#include "commands/hotspot_menus.h"
#include "commands/menus.h"
#include "commands/unit_menu.h"
#include "map/page_fields.h"
#include "map/projection.h"
#include "settings/settings_keys.h"
#include "shell/client.h"

// The start-up sequence. Its order is what the user and the settings file see: keys enter the file as they
// are read, and messages come in the order of their causes.

namespace pallomir {

void Client::Load() {
  ports_.registry.Save(kWindowHandleKey.key, std::to_string(ports_.window.Handle()));
  ports_.instanceSignal.raiseWanted = [this] {
    ports_.trace.Line("another start asks for the window");
    if (loaded_) ports_.window.Activate();
    ports_.questions.BringForward();  // those of the start-up stand there before the window does
  };
  ports_.instanceSignal.Listen();
  ReadPlacement();
  ReadMenuChoice(Command::kStartupChoice, "On Startup: ", setting::kLoadOnStartup);
  ReadMenuChoice(Command::kUpdateChoice, "On Update: ", setting::kOnUpdate);
  choices_ = ReadStoredChoices(
      ports_.settings, [this](const std::string& complaint) { ports_.trace.Line(complaint); },
      [this] { ports_.questions.Tell("Internal error 664201: illegal value for \"AlertMethod\""); });
  HotSpotsChange(menus_, choices_.hotspotMode, false);
  ports_.settings.Save(setting::kHotspotMode.key, choices_.hotspotMode);
  ChooseInMenu(menus_, Command::kUnitOfMeasureChoice, choices_.unitOfMeasure, "Unit of Measure: ");
  menus_.At(Command::kPortBase).caption = "Local Port Range Base = " + std::to_string(choices_.portBase);
  menus_.At(Command::kDemoMode).checked = choices_.demoMode;
  ReadUnits();
  ReadHotspots();
  ReadZone();
}

void Client::ReadPlacement() {
  const PixelRect area = ports_.window.WorkArea();
  const auto read = [this](const SettingKey& key, int areaValue) {
    const std::string text = ports_.settings.Get(key.key, std::to_string(areaValue));
    const auto number = ParseNumber(text);
    // More than any desktop has is as good as no number.
    constexpr double kLargest = 100'000;
    if (!number || *number > kLargest) {
      ports_.trace.Line("setting \"" + std::string(key.key) + "\" has no use for \"" + text + "\"");
      return areaValue;
    }
    return static_cast<int>(std::max(0.0, std::trunc(*number)));
  };
  PixelRect bounds;
  bounds.left = read(setting::kWindowLeft, area.left);
  bounds.top = read(setting::kWindowTop, area.top);
  bounds.width = read(setting::kWindowWidth, area.width);
  bounds.height = read(setting::kWindowHeight, area.height);
  if (!ports_.window.KnowsPosition())
    ports_.trace.Line("positions are neither set nor stored on this desktop");
  ports_.window.SetBounds(MovedIntoReach(bounds, ports_.window.Screens()));
  if (ports_.settings.Get(setting::kWindowState.key, setting::kWindowState.defaultValue) == "2") {
    Apply(modes_.Maximise(Surroundings()));
  }
}

void Client::ReadMenuChoice(Command array, const char* prefix, const SettingKey& key) {
  std::string caption = ports_.settings.Get(key.key, key.defaultValue);
  if (IndexOfCaption(menus_, array, caption) < 0) {
    ports_.trace.Line("setting \"" + std::string(key.key) + "\" has no use for \"" + caption + "\"");
    caption = key.defaultValue;
  }
  ChooseInMenu(menus_, array, IndexOfCaption(menus_, array, caption), prefix);
}

void Client::ReadUnits() {
  areUnitsDemo_ = choices_.demoMode;
  ports_.view.ShowDemoMode(areUnitsDemo_);
  ShowUnitsInMenu(menus_,
                  ParseMobileUnits(areUnitsDemo_ ? DemoMobileUnits()
                                                 : ports_.settings.Get(setting::kMobileUnits.key,
                                                                       setting::kMobileUnits.defaultValue)));
}

void Client::ReadZone() {
  if (const auto zone = ports_.clock.Zone()) {
    using Season = ZoneInfo::Season;
    utcOffsetMinutes_ = zone->bias + (zone->season == Season::kStandard   ? zone->standardBias
                                      : zone->season == Season::kDaylight ? zone->daylightBias
                                                                          : 0);
    ContinueLoad();
    return;
  }
  Question question;
  question.kind = Question::Kind::kInput;
  question.title = "Pallomir";
  question.text = "Enter timezone offset in hours (example shown for Eastern Standard Time):";
  question.defaultText = "5.0";
  ports_.questions.Ask(question, [this](const Answer& answer) {
    // No zone lies farther out than 14 hours; what is no number counts as Greenwich.
    const double hours = std::clamp(ParseNumber(answer.text).value_or(0), -14.0, 14.0);
    utcOffsetMinutes_ = static_cast<int>(std::lround(hours * 60));
    ContinueLoad();
  });
}

void Client::ContinueLoad() {
  if (closing_) return;
  PrepareFolders();
  SetFirstWindow();
  ports_.view.ShowSplash();
  TakeWindowFromPickers();
  EnumerateMUs();
  CheckUnits();
}

void Client::PrepareFolders() {
  const TileFolders folders = FoldersOfTiles(ports_.folders);
  const std::filesystem::path parent = folders.track.parent_path();
  for (const auto& folder : {parent.parent_path(), parent, folders.track, folders.zone}) MakeFolder(folder);
  DeleteFiles(folders.track);
  DeleteFiles(folders.zone);
}

void Client::SetFirstWindow() {
  const Millis now = NowLocal() / kSecond * kSecond;  // the pickers know no less
  pickers_.SetWindow({now, now + kDay});
  const auto choice = static_cast<StartupChoice>(menus_.CheckedIndex(Command::kStartupChoice));
  if (const auto window = WindowForChoice(choice, now)) pickers_.SetWindow(*window);
}

void Client::CheckUnits() {
  if (book_.enabledCount > 0) {
    RestartConnection();
    ShowWindow();
    return;
  }
  std::string text = "Warning: no mobile unit(s) defined";
  if (book_.definedCount == 1) text = "Note: the mobile unit is not enabled";
  if (book_.definedCount > 1) text = "Note: none of the defined mobile units are enabled";
  const bool noUnit = book_.definedCount == 0;
  ports_.questions.Tell(text, "pallomir",
                        noUnit ? Question::Icon::kExclamation : Question::Icon::kInformation,
                        [this](const Answer&) {
                          if (closing_) return;
                          ShowWindow();
                          handlers_.Run(Command::kEditUnits, 0);
                        });
}

void Client::ShowWindow() {
  if (closing_) return;
  ports_.window.Show();
  ports_.view.LayOut();
  map_->Open();
  CosLatTable();
  ports_.view.ReturnFocus();
  if (book_.enabledCount > 0) {
    const int first = static_cast<int>(book_.enabledToList[1]);
    currentUnitId_ = menus_.At(Command::kOnlyUnit, first).tag.substr(1, kUnitIdSize);
  }
  PrepareZoneFile();
  loaded_ = true;
  PickerLostFocus(0);
  PickerLostFocus(1);
  ports_.view.ReturnFocus();
  lastUpdateTimer_->SetEnabled(true);
  tmrFocusGetter_->SetEnabled(true);
  tmrP_->SetEnabled(true);
  Timeline_Resize();
}

void Client::PrepareZoneFile() {
  const std::filesystem::path folder = ports_.folders.commonData / "pallomir";
  const std::filesystem::path demo = folder / "ZoneMenus_Demo.txt";
  std::error_code error;
  std::filesystem::remove(demo, error);
  std::filesystem::copy_file(ports_.folders.application / "ZoneMenus_Demo.txt", demo, error);
  if (error) ports_.trace.Line("no demo zones: " + error.message());
  zoneFile_ = choices_.demoMode ? demo : folder / "ZoneMenus.txt";
}

}  // namespace pallomir
