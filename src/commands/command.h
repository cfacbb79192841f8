#pragma once

#include "platform/menu_model.h"

namespace pallomir {

/// Everything that a menu or a key can ask for, and the menus that entries stand in. What each is called,
/// where it stands and which keys it has is in the table of commands/command_table.cpp. "N" is the number
/// that comes with a command: the index of an entry in an array of entries, or what its key says.
enum class Command : int {
  kNone,

  // Menus
  kPopup,
  kView,
  kFitUnits,
  kMapTypes,
  kOptions,
  kUnits,
  kHotspotList,
  kSecureHotspotList,
  kContactPoints,
  kOnStartup,
  kOnUpdate,
  kUnitOfMeasure,
  kDataServer,
  kAlertSignal,
  kSoundMenu,
  kAlerts,
  kAlertsSendTo,
  kTextMe,
  kCarriers,
  kStale,
  kNowAlertsUnits,
  kMute,
  kZoneMenu,
  kHelp,

  // View
  kReload,
  kFitAll,
  kFitUnit,  ///< the N-th of the displayed units
  kMapData,
  kTrackingData,
  kZones,
  kTimeline,
  kZoneList,
  kJournal,
  kMapType,  ///< 1 map, 2 satellite, 3 hybrid, 4 terrain

  // Options
  kOnlyUnit,  ///< shows unit N of the list alone
  kEditUnits,
  kHotspot,  ///< network N; shown only
  kHotspotLine,
  kEditHotspots,
  kChangeHotspotMode,
  kSecureHotspot,  ///< network N; shown only
  kSecureHotspotLine,
  kEditSecureHotspots,
  kContactPoint,   ///< 0 received, 1 not received
  kStartupChoice,  ///< as StartupChoice counts
  kUpdateChoice,   ///< 0 nothing, 1 fit, 2 centre
  kUnitOfMeasureChoice,
  kLive,
  kPortBase,
  kAlertMode,   ///< 0 disabled, 1 once, 2 persistent
  kAlertSound,  ///< 1..7
  kAlertTest,
  kInstallServer,
  kStartServer,
  kStopServer,
  kUninstallServer,
  kDemoMode,

  // Alerts
  kEmailMe,
  kTextMePhone,
  kCarrier,   ///< its place from 1; 98 asks for one, 99 is the user's own
  kStaleAge,  ///< 1..5
  kNowAlerts,
  kSetAllNow,  ///< shown only, like the next two
  kClearAllNow,
  kNowUnit,  ///< unit N of the list
  kZoneAlertsOnly,
  kMuteFor,  ///< as MuteFor counts

  // Zones. The N of a zone's own entries is its place in the list of all zones, from 0.
  kZoneHeader,
  kZoneEntry,  ///< a zone's submenu
  kZoneLine,
  kAddZone,  ///< at the top level
  kSwapZoneKind,
  kDeleteAllZones,
  kUndoZones,
  kRedoZones,
  kImportZones,
  kExportZones,
  kAddSubzone,
  kDeleteZone,
  kEditZone,
  kZoomToZone,
  kBeenInZone,

  // Help
  kHelpText,
  kFaqs,
  kAbout,

  // The popup menu itself
  kFinishZone,
  kCancelZone,
  kDeleteVertex,
  kSetCorner,      ///< at the crosshair; without one the shape is finished. 1: nothing attracts the corner
  kUndoCorner,     ///< takes the last step of the drawing back
  kMoveCrosshair,  ///< 0 left, 1 up, 2 right, 3 down; 4 more for a small step, 8 more for a large one
  kGoToCorner,     ///< 0 the one before, 1 the next
  kPopupZoneLine,
  kBeenHere,
  kNearby,
  kMaxSpeed,
  kStreetView,
  kPanorama,
  kExit,

  // By key only
  kAllUnits,
  kToggleUnit,  ///< shows or hides unit N of the list
  kCloseTable,  ///< of data points
  kTimeBack,     ///< the time window, by N periods
  kTimeForward,  ///< the time window, by N periods
  kTimeZoomIn,
  kTimeZoomOut,
  kCurrentDay,

  kSeparator,  ///< a line between entries that is never addressed
};

}  // namespace pallomir
