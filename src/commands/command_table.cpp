#include "commands/command_table.h"

#include <algorithm>
#include <iterator>

#include "alerts/alert_words.h"
#include "alerts/carriers.h"
#include "settings/choice_table.h"

namespace pallomir {
namespace {

using enum Command;

constexpr CommandRow Menu(Command command, const char* name, Command parent, const char* caption) {
  return {command, name, parent, caption};
}

constexpr CommandRow Entry(Command command, const char* name, Command parent, const char* caption,
                           HotKey key = {}) {
  return {command, name, parent, caption, 0, "", false, false, CommandRow::State::kReady, {key}};
}

constexpr CommandRow Line(Command command, const char* name, Command parent) {
  return {command, name, parent, "-"};
}

constexpr CommandRow Indexed(int index, CommandRow row) {
  row.index = index;
  return row;
}

/// Has its check mark at times. What chooses one of an array needs no word: one entry of it always has.
constexpr CommandRow Toggle(CommandRow row) {
  row.isCheckable = true;
  return row;
}

constexpr CommandRow Checked(CommandRow row) {
  row.isChecked = true;
  return Toggle(row);
}

constexpr CommandRow Grey(CommandRow row) {
  row.state = CommandRow::State::kGrey;
  return row;
}

constexpr CommandRow Hidden(CommandRow row) {
  row.state = CommandRow::State::kHidden;
  return row;
}

constexpr CommandRow MapType(int index, const char* caption, const char* tag, HotKey key) {
  key.number = index;
  CommandRow row = Entry(kMapType, "mnuViewMapTypeArray", kMapTypes, caption, key);
  row.tag = tag;
  return Indexed(index, row);
}

constexpr CommandRow Tagged(const char* tag, CommandRow row) {
  row.tag = tag;
  return row;
}

constexpr CommandRow AlertMode(int index, const char* caption) {
  return Tagged(kAlertModes[index],
                Indexed(index, Entry(kAlertMode, "mnuOptionsAlertEnabledArray", kAlertSignal, caption)));
}

constexpr CommandRow Sound(int index) {
  const AlertSound& sound = kAlertSounds[index - 1];
  return Tagged(sound.tag,
                Indexed(index, Entry(kAlertSound, "mnuOptionsAlertSoundArray", kSoundMenu, sound.caption)));
}

constexpr CommandRow StaleEntry(int index) {
  const char* age = kStaleAges[index - 1];
  return Tagged(age, Indexed(index, Entry(kStaleAge, "mnuAlertsStaleArray", kStale, age)));
}

constexpr CommandRow MuteEntry(MuteFor time, const char* caption) {
  return Indexed(static_cast<int>(time), Entry(kMuteFor, "mnuAlertsMuteArray", kMute, caption));
}

// Its carriers come from their own table.
constexpr const char* kCarrierArray = "mnuAlertsTextMeProviderArray";

constexpr CommandRow KeyOnly(Command command, HotKey key, HotKey other = {}, HotKey third = {}) {
  CommandRow row{command};
  row.keys = {key, other, third};
  return row;
}

/// A key whose line in the key list and whose text on the keyboard picture say the same. `padding` is behind
/// the text in the list.
constexpr HotKey Key(const char* keys, const char* text, int line, const char* padding = "") {
  return {kNoModifier, keys, false, 0, text, line, keys, padding, text};
}

constexpr HotKey WithCtrl(HotKey key, const char* label) {
  key.modifiers = kCtrl;
  key.label = label;
  return key;
}

/// A key that the helps are silent about.
constexpr HotKey Unlisted(int modifiers, const char* keys, const char* text) {
  return {modifiers, keys, false, 0, text};
}

constexpr HotKey Numbered(int number, HotKey key) {
  key.number = number;
  return key;
}

/// A key for drawing.
constexpr HotKey Drawing(int modifiers, const char* keys, const char* text, int number = 0) {
  HotKey key = Unlisted(modifiers, keys, text);
  key.whileDrawing = true;
  key.number = number;
  return key;
}

constexpr HotKey ByPosition(HotKey key) {
  key.isPosition = true;
  return key;
}

constexpr char kArrows[] = {special_key::kLeft, special_key::kUp, special_key::kRight, special_key::kDown, 0};
constexpr char kPages[] = {special_key::kPageUp, special_key::kPageDown, 0};

// The picture tells about a digit all that it does.
constexpr const char* kDigitText =
    "N: Display only mobile unit #N\r\n"
    "\r\n"
    "<shift>N: Toggle display of mobile unit #N\r\n"
    "\r\n"
    "<ctrl>N: Move time interval back N intervals\r\n"
    "\r\n"
    "<ctrl><shift>N: Move time interval forward N intervals";

constexpr HotKey Digits(int modifiers, const char* text, int line, const char* label, const char* padding) {
  return {modifiers, "123456789", true, 0, text, line, label, padding, kDigitText};
}

constexpr CommandRow kTable[] = {
    Menu(kPopup, "mnuPopup", kNone, "&Map"),

    Menu(kView, "mnuView", kPopup, "&View"),
    Entry(kReload, "mnuViewReload", kView, "&Reload", Key("R", "Reload current data", 14)),
    Entry(kFitAll, "mnuViewFit", kView, "&Fit to All Mobile Units",
          Key("F", "Fit map to all mobile units", 7)),
    Menu(kFitUnits, "mnuViewFitToMU", kView, "Fit to Mobile &Unit"),
    Grey(Entry(kFitUnit, "mnuViewFitToMU_Array", kFitUnits, "(no mobile units enabled)")),
    Line(kSeparator, "mnuViewSeparator", kView),
    Checked(Entry(kMapData, "mnuViewMapData", kView, "&Map Data",
                  Unlisted(kCtrl, "M", "Toggle map data visibility"))),
    Checked(Entry(kTrackingData, "mnuViewTrackingData", kView, "&Tracking Data",
                  WithCtrl(Key("T", "Toggle tracking data visibility", 16, " "), "<Ctrl>T"))),
    Checked(Entry(kZones, "mnuViewZones", kView, "Alert &Zones",
                  WithCtrl(Key("Z", "Toggle alert zones visibility", 18, " "), "<Ctrl>Z"))),
    Checked(Entry(kTimeline, "mnuViewTimeline", kView, "Time&line")),
    Entry(kZoneList, "mnuViewZoneList", kView, "Z&one List"),
    Entry(kJournal, "mnuViewJournal", kView, "&Journal",
          Unlisted(kNoModifier, "J", "Journal of zones entered and left")),
    Menu(kMapTypes, "mnuViewMapType", kView, "Map T&ype"),
    Checked(MapType(1, "&Map View", "Map", Key("M", "Display \"map view\" of map", 10, " "))),
    MapType(2, "&Satellite View", "Satellite", Key("S", "Display \"satellite view\" of map", 15, " ")),
    MapType(3, "&Hybrid View", "Hybrid", Key("H", "Display \"hybrid view\" of map", 8, " ")),
    MapType(4, "&Terrain View", "Terrain", Unlisted(kNoModifier, "T", "Display \"terrain view\" of map")),

    Menu(kOptions, "mnuOptions", kPopup, "&Options"),
    Menu(kUnits, "mnuOptionsMU", kOptions, "&Mobile Units"),
    Grey(Entry(kOnlyUnit, "mnuOptionsMUArray", kUnits, "(no mobile units declared)",
               Digits(kNoModifier, "Display only mobile unit #N", 1, "1-9", " "))),
    Entry(kEditUnits, "mnuOptionsMUEdit", kOptions, "Edit Mobile Unit List"),
    Menu(kHotspotList, "mnuOptionsHotSpots", kOptions, "Mobile Unit Permitted Hotspots List"),
    Grey(Entry(kHotspot, "mnuOptionsHotSpotsArray", kHotspotList, "(No Wi-Fi HotSpots Specified)")),
    Line(kHotspotLine, "mnuOptionsMUSeparator2", kHotspotList),
    Entry(kEditHotspots, "mnuOptionsHotSpotsEdit", kHotspotList, "Edit List (currently empty)"),
    Entry(kChangeHotspotMode, "mnuOptionsHotSpotsChange", kHotspotList,
          "Change from \"Permitted\" to \"Prohibited\" List"),
    Menu(kSecureHotspotList, "mnuOptionsSecureHotSpots", kOptions, "Mobile Unit Secure HotSpots List"),
    Grey(Entry(kSecureHotspot, "mnuOptionsSecureHotSpotsArray", kSecureHotspotList,
               "(No Secure Wi-Fi HotSpots Specified)")),
    Line(kSecureHotspotLine, "mnuOptionsMUSeparator1", kSecureHotspotList),
    Entry(kEditSecureHotspots, "mnuOptionsSecureHotSpotsEdit", kSecureHotspotList,
          "Edit List (currently empty)"),
    Menu(kContactPoints, "mnuOptionsContactPoints", kOptions, "&Contact Points"),
    Toggle(Entry(kContactPoint, "mnuOptionsContactPointsArray", kContactPoints,
                 "Display Sent/Received Points (Blue)")),
    Toggle(Indexed(1, Entry(kContactPoint, "mnuOptionsContactPointsArray", kContactPoints,
                            "Display Sent/NOT Received Points (Red)"))),
    Menu(kOnStartup, "mnuoptionsOnStartupLoad", kOptions, "On Startup: "),
    Entry(kStartupChoice, "mnuoptionsOnStartupLoadArray", kOnStartup, choice::kOnStartupTexts[0]),
    Indexed(1, Entry(kStartupChoice, "mnuoptionsOnStartupLoadArray", kOnStartup, choice::kOnStartupTexts[1])),
    Indexed(2, Entry(kStartupChoice, "mnuoptionsOnStartupLoadArray", kOnStartup, choice::kOnStartupTexts[2])),
    Indexed(3, Entry(kStartupChoice, "mnuoptionsOnStartupLoadArray", kOnStartup, choice::kOnStartupTexts[3])),
    Indexed(4, Entry(kStartupChoice, "mnuoptionsOnStartupLoadArray", kOnStartup, choice::kOnStartupTexts[4])),
    Menu(kOnUpdate, "mnuOptionsOnUpdate", kOptions, "On Update: "),
    Entry(kUpdateChoice, "mnuOptionsOnUpdateArray", kOnUpdate, choice::kOnUpdateTexts[0]),
    Indexed(1, Entry(kUpdateChoice, "mnuOptionsOnUpdateArray", kOnUpdate, choice::kOnUpdateTexts[1])),
    Indexed(2, Entry(kUpdateChoice, "mnuOptionsOnUpdateArray", kOnUpdate, choice::kOnUpdateTexts[2])),
    Toggle(Entry(kLive, "mnuOptionsLive", kOptions, "&Live",
                 Unlisted(kNoModifier, "L", "Live: show new points as they come"))),
    Menu(kUnitOfMeasure, "mnuOptionsUOM", kOptions, "Unit of Measure: "),
    Entry(kUnitOfMeasureChoice, "mnuOptionsUOM_Array", kUnitOfMeasure, "Miles"),
    Indexed(1, Entry(kUnitOfMeasureChoice, "mnuOptionsUOM_Array", kUnitOfMeasure, "Kilometers")),
    Menu(kAlertSignal, "mnuOptionsAlert", kOptions, "Alert"),
    AlertMode(0, "&Disabled"),
    AlertMode(1, "&Once"),
    AlertMode(2, "&Persistent"),
    Menu(kSoundMenu, "mnuOptionsAlertSound", kAlertSignal, "&Sound"),
    Sound(1),
    Sound(2),
    Sound(3),
    Sound(4),
    Sound(5),
    Sound(6),
    Sound(7),
    Entry(kAlertTest, "mnuOptionsAlertTest", kAlertSignal, "&Test"),
    Entry(kPortBase, "mnuOptionsPortBase", kOptions, "Local Port Range Base = "),
    Menu(kDataServer, "mnuOptionsDataServer", kOptions, "Data Server"),
    Entry(kInstallServer, "mnuOptionsDataServerInstall", kDataServer, "&Install"),
    Entry(kStartServer, "mnuOptionsDataServerStart", kDataServer, "&Start"),
    Entry(kStopServer, "mnuOptionsDataServerStop", kDataServer, "&Stop"),
    Entry(kUninstallServer, "mnuOptionsDataServerUninstall", kDataServer, "&Uninstall"),
    Toggle(Entry(kDemoMode, "mnuOptionsDemoMode", kOptions, "&Demo Mode")),

    Menu(kAlerts, "mnuAlerts", kPopup, "&Alerts"),
    Menu(kAlertsSendTo, "mnuAlertsSendTo", kAlerts, "Alerts to: (unconfigured)"),
    Entry(kEmailMe, "mnuAlertsEmailMe", kAlertsSendTo, "&Email Me..."),
    Menu(kTextMe, "mnuAlertsTextMe", kAlertsSendTo, "&Text Me"),
    Entry(kTextMePhone, "mnuAlertsTextMePhone", kTextMe, "Mobile &Phone Number..."),
    Menu(kCarriers, "mnuAlertsTextMeProvider", kTextMe, "&Mobile Provider"),
    Indexed(97, Line(kCarrier, kCarrierArray, kCarriers)),
    Indexed(kCustomCarrierEntry, Entry(kCarrier, kCarrierArray, kCarriers, "&X Custom (User-Specified)")),
    Hidden(Indexed(kCustomCarrier, Entry(kCarrier, kCarrierArray, kCarriers, "&Y"))),
    Menu(kStale, "mnuAlertsStale", kAlerts, "Data is Stale After: "),
    StaleEntry(1),
    StaleEntry(2),
    StaleEntry(3),
    StaleEntry(4),
    StaleEntry(5),
    Toggle(Entry(kNowAlerts, "mnuAlertsNOW", kAlerts, "NOW Alerts")),
    Menu(kNowAlertsUnits, "mnuAlertsNOWUnits", kAlerts, "NOW Alerts of Units"),
    Grey(Entry(kSetAllNow, "mnuAlertsNOWSetAll", kNowAlertsUnits, "Set All")),
    Grey(Entry(kClearAllNow, "mnuAlertsNOWClearAll", kNowAlertsUnits, "Clear All")),
    Grey(Entry(kNowUnit, "mnuAlertsNOW_Array", kNowAlertsUnits, "Unit #0")),
    Line(kSeparator, "mnuAlertsSeparator", kAlerts),
    Toggle(Entry(kZoneAlertsOnly, "mnuAlertsZonesOnly", kAlerts, "&Zone Alerts Only")),
    Menu(kMute, "mnuAlertsMute", kAlerts, "&Mute"),
    MuteEntry(MuteFor::kHour, "For 1 &Hour"),
    MuteEntry(MuteFor::kUntilTomorrow, "Until &Tomorrow"),
    MuteEntry(MuteFor::kUntilSwitchedOn, "Until &Switched On"),
    Grey(MuteEntry(MuteFor::kNothing, "Switch Sound &On")),

    Menu(kZoneMenu, "mnuZones", kPopup, "&Zones"),
    Grey(Entry(kZoneHeader, "mnuZonesArray", kZoneMenu, "( No Alerted Zones Defined)")),
    Line(kZoneLine, "mnuZonesSeparator", kZoneMenu),
    Entry(kAddZone, "mnuZonesAdd", kZoneMenu, "Add New Alerted Zone 1"),
    Entry(kSwapZoneKind, "mnuZonesChange", kZoneMenu, "Change Top-Level Zone(s) to Non-Alert"),
    Entry(kDeleteAllZones, "mnuZonesDeleteAllZones", kZoneMenu, "Delete All Zones"),
    Entry(kUndoZones, "mnuZonesUndo", kZoneMenu, "&Undo"),
    Entry(kRedoZones, "mnuZonesRedo", kZoneMenu, "&Redo"),
    Entry(kImportZones, "mnuZonesImport", kZoneMenu, "&Import..."),
    Entry(kExportZones, "mnuZonesExport", kZoneMenu, "E&xport..."),
    Menu(kHelp, "mnuHelp", kPopup, "&Help"),
    Grey(Entry(kHelpText, "mnuHelpHelp", kHelp, "&Help")),
    Entry(kFaqs, "mnuHelpFAQs", kHelp, "&FAQs"),
    Entry(kAbout, "mnuHelpAbout", kHelp, "&About Pallomir"),

    Hidden(Entry(kFinishZone, "mnuPopupZoneFinish", kPopup, "Finish Editing Zone")),
    Hidden(Entry(kCancelZone, "mnuPopupZoneCancel", kPopup, "Cancel Editing Zone",
                 Drawing(kNoModifier, "\x1b", "While a zone is drawn: cancel"))),
    Hidden(Entry(kDeleteVertex, "mnuPopupZoneDeleteVertex", kPopup, "Delete This Vertex")),
    Hidden(Line(kPopupZoneLine, "mnuPopupZoneSeparator", kPopup)),
    Entry(kBeenHere, "mnuPopupBeenHere", kPopup, "Been Here?"),
    Entry(kNearby, "mnuPopupDsplyDataPoints", kPopup, "Display Nearby DataPoints List",
          Key("N", "Display nearby datapoints table", 11, " ")),
    Entry(kMaxSpeed, "mnuPopupDsplyMaxSpeed", kPopup, "Display Max Speed Points List",
          Key("P", "Display max speed table", 13, " ")),
    Toggle(Entry(kStreetView, "mnuPopupStreetView", kPopup, "Show StreetView Map Overlay",
                 Key("C", "Toggle StreetView map overlay", 6))),
    Toggle(Entry(kPanorama, "mnuPopupPanorama", kPopup, "Show StreetView Panorama",
                 Key("V", "Toggle StreetView 360º Panorama", 17))),
    Line(kSeparator, "mnuPopupSeparator", kPopup),
    Entry(kExit, "mnuPopupExit", kPopup, "E&xit"),

    KeyOnly(
        kAllUnits,
        {kNoModifier, "A0", false, 0, "Display all mobile units", 5, "A", " ", "Display all mobile units"},
        Unlisted(kShift, "0", "Display all mobile units")),
    KeyOnly(kToggleUnit, Digits(kShift, "Toggle display of mobile unit #N", 2, "<Shift>1-9", "")),
    KeyOnly(kCloseTable, Unlisted(kNoModifier, "\x1b", "Close the datapoints table")),
    KeyOnly(kTimeBack, Numbered(1, Key("[", "Move time interval back 1 period", 21, " ")),
            Digits(kCtrl, "Move time interval back N periods", 3, "<Ctrl>1-9", " ")),
    KeyOnly(kTimeForward, Numbered(1, Key("]", "Move time interval forward 1 period", 20, " ")),
            Digits(kCtrl | kShift, "Move time interval forward N periods", 4, "<Ctrl><Shift>", " ")),
    KeyOnly(kSetCorner,
            Drawing(kNoModifier, "\r", "While a zone is drawn: set, take up or put down a corner, or finish"),
            Drawing(kAlt, "\r", "The same, but no other zone's corner attracts it", 1)),
    KeyOnly(kUndoCorner, Drawing(kCtrl, "Z", "While a zone is drawn: take the last step back")),
    KeyOnly(kMoveCrosshair,
            ByPosition(Drawing(kNoModifier, kArrows, "While a zone is drawn: move the crosshair")),
            ByPosition(Drawing(kShift, kArrows, "The same, by single pixels", 4)),
            ByPosition(Drawing(kCtrl, kArrows, "The same, by large steps", 8))),
    KeyOnly(kGoToCorner, ByPosition(Drawing(kNoModifier, kPages,
                                            "While a zone is drawn: to the corner before, to the next"))),
    KeyOnly(kTimeZoomIn, Key("I", "Zoom in (in time) to 1/3 the interval", 9)),
    KeyOnly(kTimeZoomOut, Key("O", "Zoom out (in time) to 3x the interval", 12)),
    KeyOnly(kCurrentDay, Key("X", "Return to current day, 24-hr display", 19, " ")),
};

}  // namespace

std::span<const CommandRow> CommandTable() { return kTable; }

bool IsBuilt(Command command) {
  const auto row = std::ranges::find(kTable, command, &CommandRow::command);
  return row != std::end(kTable) && row->state != CommandRow::State::kLater;
}

}  // namespace pallomir
