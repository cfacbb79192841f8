#include <string>
#include <unordered_map>

#include "base/number_format.h"
#include "map/page_fields.h"
#include "shell/client.h"
#include "shell/menus.h"
#include "shell/settings_keys.h"

// What the menus do.

namespace pallomir {

void Client::MenuButtonClicked() {
  if (menus_.At("mnuPopupPanorama").checked) {
    SetPanorama(false);
  } else {
    ports_.view.PopUpMenu(ClientView::MenuPlace::kUnderButton);
  }
}

void Client::MenuChosen(const MenuItem& item) {
  if (closing_) return;
  HoldFocusOff(false);
  using Action = void (Client::*)(int index);
  static const std::unordered_map<std::string, Action> kActions{
      {"mnuViewReload", &Client::OnMenuReload},
      {"mnuViewFit", &Client::OnMenuFit},
      {"mnuViewFitToMU_Array", &Client::OnMenuFit},
      {"mnuViewMapData", &Client::OnMenuMapData},
      {"mnuViewTrackingData", &Client::OnMenuTrackingData},
      {"mnuViewZones", &Client::OnMenuZones},
      {"mnuViewTimeline", &Client::OnMenuTimeline},
      {"mnuViewMapTypeArray", &Client::ChooseMapType},
      {"mnuOptionsContactPointsArray", &Client::OnMenuContactPoints},
      {kUnitMenu, &Client::ShowOnlyUnit},
      {"mnuoptionsOnStartupLoadArray", &Client::OnMenuStartup},
      {"mnuOptionsOnUpdateArray", &Client::OnMenuUpdate},
      {"mnuOptionsUOM_Array", &Client::OnMenuUnitOfMeasure},
      {"mnuOptionsPortBase", &Client::OnMenuPortBase},
      {"mnuPopupStreetView", &Client::OnMenuStreetView},
      {"mnuPopupPanorama", &Client::OnMenuPanorama},
      {"mnuOptionsMUEdit", &Client::OnMenuEditUnits},
      {"mnuOptionsHotSpotsEdit", &Client::OnMenuHotspotsEdit},
      {"mnuOptionsHotSpotsChange", &Client::OnMenuHotspotsChange},
      {"mnuOptionsSecureHotSpotsEdit", &Client::OnMenuSecureHotspotsEdit},
      {"mnuOptionsDataServerInstall", &Client::OnMenuInstall},
      {"mnuOptionsDataServerStart", &Client::OnMenuStart},
      {"mnuOptionsDataServerStop", &Client::OnMenuStop},
      {"mnuOptionsDataServerUninstall", &Client::OnMenuUninstall},
      {"mnuOptionsDemoMode", &Client::OnMenuDemoMode},
      {"mnuHelpFAQs", &Client::OnMenuFaqs},
      {"mnuHelpAbout", &Client::OnMenuAbout},
      {"mnuPopupExit", &Client::OnMenuExit},
  };
  const auto action = kActions.find(item.name);
  if (action != kActions.end()) (this->*action->second)(item.index);
}

bool Client::Toggle(const char* menu, int index) {
  MenuItem& item = menus_.At(menu, index);
  return item.checked = !item.checked;
}

void Client::OnMenuReload(int) { MapReload(); }

void Client::OnMenuFit(int index) { FitByUser(static_cast<std::size_t>(index)); }

void Client::OnMenuMapData(int) {
  Toggle("mnuViewMapData");
  WriteToggle("mnuViewMapData", field::kMapData);
}

void Client::OnMenuTrackingData(int) {
  Toggle("mnuViewTrackingData");
  WriteToggle("mnuViewTrackingData", field::kTrackingData);
  ShowPickers();
}

void Client::OnMenuZones(int) {
  Toggle("mnuViewZones");
  WriteToggle("mnuViewZones", field::kZonesShown);
}

void Client::OnMenuTimeline(int) {
  ports_.view.ShowTimeline(Toggle("mnuViewTimeline"));
  MapReload();
}

void Client::ChooseMapType(int index) {
  menus_.CheckOnly("mnuViewMapTypeArray", index);
  WriteMapType();
}

void Client::OnMenuContactPoints(int index) {
  Toggle("mnuOptionsContactPointsArray", index);
  map_->Rebuild();
}

void Client::OnMenuStartup(int index) {
  ChooseInMenu(menus_, "mnuoptionsOnStartupLoadArray", index, "mnuoptionsOnStartupLoad", "On Startup: ");
  ports_.settings.Save(setting::kLoadOnStartup.key, menus_.At("mnuoptionsOnStartupLoadArray", index).caption);
}

void Client::OnMenuUpdate(int index) {
  ChooseInMenu(menus_, "mnuOptionsOnUpdateArray", index, "mnuOptionsOnUpdate", "On Update: ");
  ports_.settings.Save(setting::kOnUpdate.key, menus_.At("mnuOptionsOnUpdateArray", index).caption);
}

void Client::OnMenuUnitOfMeasure(int index) {
  choices_.unitOfMeasure = index;
  ChooseInMenu(menus_, "mnuOptionsUOM_Array", index, "mnuOptionsUOM", "Unit of Measure: ");
  ports_.settings.Save(setting::kUnitOfMeasure.key, std::to_string(index));
}

void Client::OnMenuPortBase(int) {
  Question question;
  question.kind = Question::Kind::kInput;
  question.title = "Pallomir Port Selector";
  question.text =
      "Select the base port address you want to use for your UDP port(s). There is no need to change this "
      "from the "
      "default value unless a conflict occurs with the ports assigned by another application (may we suggest "
      "18801, "
      "28801 or 38801).";
  question.defaultText = std::to_string(choices_.portBase);
  ports_.questions.Ask(question, [this](const Answer& answer) {
    if (answer.text.empty()) return;
    const double port = ParseNumber(answer.text).value_or(-1);
    if (port < 0 || port > 65535) return OnMenuPortBase(0);
    choices_.portBase = static_cast<int>(port);
    ports_.settings.Save(setting::kPortBase.key, std::to_string(choices_.portBase));
    menus_.At("mnuOptionsPortBase").caption = "Local Port Range Base = " + answer.text;
  });
}

void Client::OnMenuStreetView(int) {
  ports_.browser.WriteField(field::kStreetView, Toggle("mnuPopupStreetView") ? "True" : "False");
}

void Client::OnMenuPanorama(int) { SetPanorama(!menus_.At("mnuPopupPanorama").checked); }

void Client::SetPanorama(bool on) {
  menus_.At("mnuPopupPanorama").checked = on;
  ports_.browser.WriteField(field::kPanorama, on ? "True" : "False");
  ports_.view.SetMenuLabel(on ? "Exit to Map" : "Menu");
}

void Client::OnMenuEditUnits(int) { ports_.view.EditUnits(UnitsFromMenu(menus_)); }

void Client::OnMenuAbout(int) { ports_.view.ShowAbout(); }

void Client::OnMenuExit(int) { ports_.window.Close(); }

}  // namespace pallomir
