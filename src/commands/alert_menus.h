#pragma once

#include <string>
#include <vector>

#include "alerts/alert_delivery.h"
#include "platform/menu_model.h"
#include "tracking/mobile_units.h"

namespace pallomir {

/// Puts the carriers into their menu. Once.
void AddCarriers(MenuModel& menus);

// What the entries show.
void ShowAlertSignal(MenuModel& menus, int mode, int sound);
void ShowDelivery(MenuModel& menus, const AlertDelivery& delivery);
void ShowStaleness(MenuModel& menus, int choice);
/// `text` says for how long it is muted; empty where it is not.
void ShowMuteChoice(MenuModel& menus, const std::string& text);

/// Fills the menu of the units' own switches. They do nothing.
void FillNowUnits(MenuModel& menus, MenuItem& menu, const std::vector<MobileUnit>& units);

}  // namespace pallomir
