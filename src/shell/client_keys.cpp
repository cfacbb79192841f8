#include "map/page_fields.h"
#include "shell/client.h"

// What the hot keys do.

namespace pallomir {

bool Client::KeyDown(int modifiers, char key) {
  if (closing_ || pickers_.PickerFocusMask() != 0) return false;
  const auto command = FindKeyCommand(modifiers, key, menus_.Count(kUnitMenu) - 1);
  if (!command) return false;
  if (RunKeyCommand(*command)) ports_.beeper.Beep();
  return true;
}

// False for an action that stays silent, because what it opens is not built yet.
bool Client::RunKeyCommand(const KeyCommand& command) {
  const int n = command.number;
  switch (command.action) {
    case KeyAction::kShowAllUnits:
      ShowAllUnits();
      break;
    case KeyAction::kShowOnlyUnit:
      ShowOnlyUnit(n);
      break;
    case KeyAction::kToggleUnit:
      ToggleUnit(n);
      break;
    case KeyAction::kStreetViewOverlay:
      OnMenuStreetView(0);
      break;
    case KeyAction::kPanorama:
      OnMenuPanorama(0);
      break;
    case KeyAction::kFitAll:
      FitByUser(0);
      break;
    case KeyAction::kReload:
      MapReload();
      break;
    case KeyAction::kNearby:
      ports_.browser.WriteField(field::kGeocode, "True");
      return false;
    case KeyAction::kMaxSpeed:
      return false;
    case KeyAction::kMapType:
      ChooseMapType(n);
      break;
    case KeyAction::kBack:
      NavigateTo(MovedBy(pickers_.Window(), -n));
      break;
    case KeyAction::kForward:
      NavigateTo(MovedBy(pickers_.Window(), n));
      break;
    case KeyAction::kZoomIn:
      NavigateTo(ZoomedIn(pickers_.Window()));
      break;
    case KeyAction::kZoomOut:
      NavigateTo(ZoomedOut(pickers_.Window()));
      break;
    case KeyAction::kCurrentDay:
      ReturnToCurrentDay();
      break;
    case KeyAction::kToggleMapData:
      OnMenuMapData(0);
      break;
    case KeyAction::kToggleTrackingData:
      OnMenuTrackingData(0);
      break;
    case KeyAction::kToggleZones:
      OnMenuZones(0);
      break;
  }
  return true;
}

}  // namespace pallomir
