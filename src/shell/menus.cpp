#include "shell/menus.h"

#include <string>

#include "tracking/mobile_units.h"

namespace pallomir {
namespace {

enum State { kShown, kGrey, kLater };

struct Row {
  const char* parent;
  const char* name;
  int index;
  const char* caption;
  const char* tag = "";
  bool checked = false;
  State state = kShown;
};

// A row's parent stands above it. Parents are found by name.
constexpr Row kRows[] = {
    {"", "mnuPopup", 0, "&Map"},

    {"mnuPopup", "mnuView", 0, "&View"},
    {"mnuView", "mnuViewReload", 0, "&Reload"},
    {"mnuView", "mnuViewFit", 0, "&Fit to All Mobile Units"},
    {"mnuView", "mnuViewFitToMU", 0, "Fit to Mobile &Unit"},
    {"mnuViewFitToMU", "mnuViewFitToMU_Array", 0, "(no mobile units enabled)"},
    {"mnuView", "mnuViewSeparator", 0, "-"},
    {"mnuView", "mnuViewMapData", 0, "&Map Data", "", true},
    {"mnuView", "mnuViewTrackingData", 0, "&Tracking Data", "", true},
    {"mnuView", "mnuViewZones", 0, "Alert &Zones", "", true},
    {"mnuView", "mnuViewTimeline", 0, "Time&line", "", true},
    {"mnuView", "mnuViewMapType", 0, "Map T&ype"},
    {"mnuViewMapType", "mnuViewMapTypeArray", 1, "&Map View", "Map", true},
    {"mnuViewMapType", "mnuViewMapTypeArray", 2, "&Satellite View", "Satellite"},
    {"mnuViewMapType", "mnuViewMapTypeArray", 3, "&Hybrid View", "Hybrid"},
    {"mnuViewMapType", "mnuViewMapTypeArray", 4, "&Terrain View", "Terrain"},

    {"mnuPopup", "mnuOptions", 0, "&Options"},
    {"mnuOptions", "mnuOptionsMU", 0, "&Mobile Units"},
    {"mnuOptionsMU", kUnitMenu, 0, "(no mobile units declared)"},
    {"mnuOptions", "mnuOptionsMUEdit", 0, "Edit Mobile Unit List"},
    {"mnuOptions", "mnuOptionsHotSpots", 0, "Mobile Unit Permitted Hotspots List"},
    {"mnuOptionsHotSpots", "mnuOptionsHotSpotsArray", 0, "(No Wi-Fi HotSpots Specified)", "", false, kGrey},
    {"mnuOptionsHotSpots", "mnuOptionsMUSeparator2", 0, "-"},
    {"mnuOptionsHotSpots", "mnuOptionsHotSpotsEdit", 0, "Edit List (currently empty)"},
    {"mnuOptionsHotSpots", "mnuOptionsHotSpotsChange", 0, "Change from \"Permitted\" to \"Prohibited\" List"},
    {"mnuOptions", "mnuOptionsSecureHotSpots", 0, "Mobile Unit Secure HotSpots List"},
    {"mnuOptionsSecureHotSpots", "mnuOptionsSecureHotSpotsArray", 0, "(No Secure Wi-Fi HotSpots Specified)",
     "", false, kGrey},
    {"mnuOptionsSecureHotSpots", "mnuOptionsMUSeparator1", 0, "-"},
    {"mnuOptionsSecureHotSpots", "mnuOptionsSecureHotSpotsEdit", 0, "Edit List (currently empty)"},
    {"mnuOptions", "mnuOptionsContactPoints", 0, "&Contact Points"},
    {"mnuOptionsContactPoints", "mnuOptionsContactPointsArray", 0, "Display Sent/Received Points (Blue)"},
    {"mnuOptionsContactPoints", "mnuOptionsContactPointsArray", 1, "Display Sent/NOT Received Points (Red)"},
    {"mnuOptions", "mnuoptionsOnStartupLoad", 0, "On Startup: "},
    {"mnuoptionsOnStartupLoad", "mnuoptionsOnStartupLoadArray", 0, "Load Nothing"},
    {"mnuoptionsOnStartupLoad", "mnuoptionsOnStartupLoadArray", 1, "Load Data Since Midnight"},
    {"mnuoptionsOnStartupLoad", "mnuoptionsOnStartupLoadArray", 2, "Load Data Since 3 AM"},
    {"mnuoptionsOnStartupLoad", "mnuoptionsOnStartupLoadArray", 3, "Load Last 24 Hrs Data"},
    {"mnuoptionsOnStartupLoad", "mnuoptionsOnStartupLoadArray", 4, "Load Most Recent 1000 Data Points"},
    {"mnuOptions", "mnuOptionsOnUpdate", 0, "On Update: "},
    {"mnuOptionsOnUpdate", "mnuOptionsOnUpdateArray", 0, "Do &Nothing"},
    {"mnuOptionsOnUpdate", "mnuOptionsOnUpdateArray", 1, "Auto &Fit"},
    {"mnuOptionsOnUpdate", "mnuOptionsOnUpdateArray", 2, "Auto &Center on Most Recent Point"},
    {"mnuOptions", "mnuOptionsUOM", 0, "Unit of Measure: "},
    {"mnuOptionsUOM", "mnuOptionsUOM_Array", 0, "Miles"},
    {"mnuOptionsUOM", "mnuOptionsUOM_Array", 1, "Kilometers"},
    {"mnuOptions", "mnuOptionsPortBase", 0, "Local Port Range Base = "},
    {"mnuOptions", "mnuOptionsDataServer", 0, "Data Server"},
    {"mnuOptionsDataServer", "mnuOptionsDataServerInstall", 0, "&Install"},
    {"mnuOptionsDataServer", "mnuOptionsDataServerStart", 0, "&Start"},
    {"mnuOptionsDataServer", "mnuOptionsDataServerStop", 0, "&Stop"},
    {"mnuOptionsDataServer", "mnuOptionsDataServerUninstall", 0, "&Uninstall"},
    {"mnuOptions", "mnuOptionsDemoMode", 0, "&Demo Mode"},

    {"mnuPopup", "mnuAlerts", 0, "&Alerts", "", false, kLater},
    {"mnuPopup", "mnuZones", 0, "&Zones", "", false, kLater},
    {"mnuPopup", "mnuHelp", 0, "&Help"},
    {"mnuHelp", "mnuHelpHelp", 0, "&Help", "", false, kGrey},
    {"mnuHelp", "mnuHelpFAQs", 0, "&FAQs"},
    {"mnuHelp", "mnuHelpAbout", 0, "&About Pallomir"},

    {"mnuPopup", "mnuPopupBeenHere", 0, "Been Here?", "", false, kLater},
    {"mnuPopup", "mnuPopupDsplyDataPoints", 0, "Display Nearby DataPoints List", "", false, kLater},
    {"mnuPopup", "mnuPopupStreetView", 0, "Show StreetView Map Overlay"},
    {"mnuPopup", "mnuPopupPanorama", 0, "Show StreetView Panorama"},
    {"mnuPopup", "mnuPopupSeparator", 0, "-"},
    {"mnuPopup", "mnuPopupExit", 0, "E&xit"},
};

struct HotKey {
  const char* name;
  int index;
  const char* key;
};

constexpr HotKey kHotKeys[] = {
    {"mnuViewReload", 0, "R"},       {"mnuViewFit", 0, "F"},
    {"mnuViewMapData", 0, "Ctrl+M"}, {"mnuViewTrackingData", 0, "Ctrl+T"},
    {"mnuViewZones", 0, "Ctrl+Z"},   {"mnuViewMapTypeArray", 1, "M"},
    {"mnuViewMapTypeArray", 2, "S"}, {"mnuViewMapTypeArray", 3, "H"},
    {"mnuViewMapTypeArray", 4, "T"}, {"mnuPopupDsplyDataPoints", 0, "N"},
    {"mnuPopupStreetView", 0, "C"},  {"mnuPopupPanorama", 0, "V"},
};

}  // namespace

void BuildMenus(MenuModel& menus) {
  for (const Row& row : kRows) {
    MenuItem item;
    item.name = row.name;
    item.index = row.index;
    item.caption = row.caption;
    item.tag = row.tag;
    item.checked = row.checked;
    item.visible = row.state == kShown || row.state == kGrey;
    item.enabled = row.state != kGrey;
    MenuItem& parent = *row.parent ? menus.At(row.parent) : menus.bar;
    parent.children.push_back(item);
  }
  for (const HotKey& row : kHotKeys) menus.At(row.name, row.index).hotKey = row.key;
}

void ChooseInMenu(MenuModel& menus, const char* array, int index, const char* parent, const char* prefix) {
  menus.CheckOnly(array, index);
  menus.At(parent).caption = prefix + menus.At(array, index).caption;
}

int IndexOfCaption(const MenuModel& menus, const char* array, const std::string& caption) {
  const MenuItem* parent = menus.ArrayParent(array);
  if (!parent) return -1;
  for (const MenuItem& item : parent->children) {
    if (item.name == array && item.caption == caption) return item.index;
  }
  return -1;
}

}  // namespace pallomir
