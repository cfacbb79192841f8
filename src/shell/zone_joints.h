#pragma once

#include <functional>
#include <memory>
#include <string>

#include "commands/zone_menu.h"
#include "platform/event_loop.h"
#include "shell/joint.h"
#include "zones/zone_transfer.h"
#include "zones/zones.h"

namespace pallomir {

/// The zones in the program: the room joined to the menus, the commands, the map page and the windows.
class ZoneJoints final : public Joint {
 public:
  /// Sets the handlers of the commands about zones, and listens to what the page says of them.
  explicit ZoneJoints(const JoinedRooms& rooms);

  /// Chooses the file, the user's own or a fresh copy of the demo's, and reads it.
  void Open() override;
  void Close() override;
  void OnPageReady() override;
  void OnPageLost() override;

  /// The zones, or what can be done with them, are others.
  std::function<void()> zonesChanged = [] {};
  const ZoneTree& Tree() const { return zones_->Tree(); }  ///< from Open on
  /// Visits to a zone are to be searched for. The entries for it can be chosen where this is set by Open.
  std::function<void(ZoneOrdinal)> beenIn;

  bool IsDrawing() const { return zones_ && zones_->IsDrawing(); }

  // The pointer over the map.
  void PointerMoved(double lat, double lng);  ///< degrees
  void PointerLeft();

  // The map's popup menu.
  void OfferZoneAt(double lat, double lng);  ///< degrees; the popup is about to open there
  void OfferNone();                          ///< it opens elsewhere, or has closed

 private:
  void JoinPage(MapBridge::Host& host);
  void HandleCommands(CommandHandlers& handlers);
  void HandleDrawing(CommandHandlers& handlers);
  void ShowMenus();
  void ShowList();
  void OnPointerRests();
  void Write(const char* field, const std::string& text) { map_.Form().WriteZones(field, text); }
  Zones::Host ZonesHost();
  ZoneMenuState MenuState() const;

  const Ports& ports_;
  ZonesView& view_;
  StoredChoices& choices_;
  MenuModel& menus_;
  MapBridge& map_;
  // From Open on.
  std::unique_ptr<Zones> zones_;
  std::unique_ptr<ZoneTransfer> transfer_;
  std::unique_ptr<ZoneListModel> list_;

  double pointerLat_ = 0;
  double pointerLng_ = 0;
  std::unique_ptr<Timer> pointerRest_;
};

}  // namespace pallomir
