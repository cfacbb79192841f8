#include "commands/alert_menus.h"

#include <list>
#include <utility>

#include "alerts/alert_words.h"
#include "alerts/carriers.h"
#include "commands/menus.h"

namespace pallomir {
namespace {

std::string CarrierCaption(const std::string& accessKey, const std::string& name, const std::string& domain) {
  return "&" + accessKey + Doubled(name + " (" + domain + ")");
}

}  // namespace

void AddCarriers(MenuModel& menus) {
  MenuItem& menu = menus.At(Command::kCarriers);
  std::list<MenuItem> items;
  for (const Carrier& carrier : Carriers()) {
    MenuItem& item = items.emplace_back();
    item.command = Command::kCarrier;
    item.name = menus.At(Command::kCarrier, kCustomCarrier).name;
    item.index = static_cast<int>(items.size());
    item.caption = CarrierCaption(std::string(1, carrier.accessKey) + " ", carrier.name, carrier.gateway);
    item.tag = std::string(carrier.name) + "~" + carrier.gateway;
  }
  menu.children.splice(menu.children.begin(), items);
}

void ShowAlertSignal(MenuModel& menus, int mode, int sound) {
  menus.CheckOnly(Command::kAlertMode, mode);
  menus.CheckOnly(Command::kAlertSound, sound);
  menus.At(Command::kAlertSignal).caption = "Alert " + menus.At(Command::kAlertMode, mode).tag + " \"" +
                                            menus.At(Command::kAlertSound, sound).tag + "\"";
}

void ShowDelivery(MenuModel& menus, const AlertDelivery& delivery) {
  menus.At(Command::kAlertsSendTo).caption = delivery.Caption();
  menus.CheckOnly(Command::kCarrier, delivery.CarrierIndex());
  const AlertDelivery::Gateway custom = delivery.CustomGateway();
  MenuItem& item = menus.At(Command::kCarrier, kCustomCarrier);
  item.visible = !custom.name.empty();
  item.caption = CarrierCaption("Y     ", custom.name, custom.domain);
  item.tag = custom.name + "~" + custom.domain;
}

void ShowStaleness(MenuModel& menus, int choice) {
  menus.CheckOnly(Command::kStaleAge, choice);
  menus.At(Command::kStale).caption = "Data is Stale After: " + menus.At(Command::kStaleAge, choice).tag;
}

void ShowMuteChoice(MenuModel& menus, const std::string& text) {
  menus.At(Command::kMute).caption = text.empty() ? "&Mute" : "&" + text;
  menus.At(Command::kMuteFor, static_cast<int>(MuteFor::kNothing)).enabled = !text.empty();
}

void FillNowUnits(MenuModel& menus, MenuItem& menu, const std::vector<MobileUnit>& units) {
  menu.children.remove_if(
      [](const MenuItem& item) { return item.command == Command::kNowUnit && item.index > 0; });
  menus.At(Command::kNowUnit).visible = units.empty();
  for (const MobileUnit& unit : units) {
    const int i = static_cast<int>(&unit - units.data()) + 1;
    menu.children.push_back(UserEntry(menus, Command::kNowUnit, i, unit.id + " - " + unit.description));
    menu.children.back().enabled = false;
  }
}

}  // namespace pallomir
