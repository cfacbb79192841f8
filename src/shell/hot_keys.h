#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pallomir {

/// Modifier mask of a key; combinations add.
enum KeyModifier { kNoModifier = 0, kShift = 1, kCtrl = 2, kAlt = 4 };

/// What a key can do. N is the number of the command.
enum class KeyAction {
  kShowAllUnits,
  kShowOnlyUnit,  ///< unit N
  kToggleUnit,    ///< unit N
  kStreetViewOverlay,
  kPanorama,
  kFitAll,
  kReload,
  kNearby,
  kMaxSpeed,
  kMapType,     ///< N: 1 map, 2 satellite, 3 hybrid, 4
  kBack,        ///< the time window, by N periods
  kForward,     ///< the time window, by N periods
  kZoomIn,      ///< to the middle third of the time window
  kZoomOut,     ///< to three times the time window
  kCurrentDay,  ///< the On Startup choice
  kToggleMapData,
  kToggleTrackingData,
  kToggleZones,
};

struct KeyCommand {
  KeyAction action;
  int number = 0;  ///< N, for actions that have one
  bool operator==(const KeyCommand&) const = default;
};

/// What the key does. `key` is an upper-case letter, a digit, or another key's character; `unitCount` is the
/// number of defined units, of which digits reach the first nine. Nothing for a key without an action under
/// these modifiers.
std::optional<KeyCommand> FindKeyCommand(int modifiers, char key, int unitCount);

/// The captions of the keyboard picture's keys, in the order of the help table. The views last for ever.
std::vector<std::string_view> KeyCaptions();

/// What the keyboard picture says about the key with this caption; lines end with CR LF. Empty for a key that
/// does nothing, and for a caption that is not in the table.
std::string_view KeyDescription(std::string_view caption);

/// The two columns of the key list, line for line; lines are separated by CR LF.
struct KeyListText {
  std::string hotKeys;
  std::string functions;
};
KeyListText KeyList();

}  // namespace pallomir
