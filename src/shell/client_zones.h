#pragma once

#include <functional>
#include <memory>
#include <string>

#include "base/trace.h"
#include "commands/command_handlers.h"
#include "commands/zone_menu.h"
#include "map/map_view.h"
#include "platform/event_loop.h"
#include "platform/folders.h"
#include "platform/menu_model.h"
#include "ui/question_queue.h"
#include "zones/zone_transfer.h"
#include "zones/zones.h"

namespace pallomir {

/// The zones in the program: the room joined to the menus, the commands, the map page and the windows.
class ClientZones {
 public:
  /// Whom it tells. All calls come from the event loop.
  struct Host {
    ZoneListSender::Write write;  ///< into a field of the map page
    std::function<void(const WorldBox&)> zoomTo;
    std::function<void()> endProgram;
    std::function<bool()> inKilometers;  ///< how areas are told
  };

  /// Sets the handlers of the commands about zones. All that is given by reference outlives this object.
  ClientZones(ZonesView& view, EventLoop& loop, QuestionQueue& questions, Trace& trace, MenuModel& menus,
              CommandHandlers& handlers, Host host);

  /// Chooses the file, the user's own or a fresh copy of the demo's, and reads it. Once, before the page is
  /// asked for.
  void Open(const Folders& folders, bool isDemoMode);
  void Close();

  // What the page tells.
  void OnPageReady();
  void OnPageLost();
  void OnShapeFinished(const std::string& payload);
  void OnShapeCancelled();
  void OnShapeClosable();

  bool IsDrawing() const { return zones_ && zones_->IsDrawing(); }
  /// Whether positions outside all zones are the quiet ones.
  bool IsTopLevelAlerted() const;

  // The pointer over the map.
  void PointerMoved(double lat, double lng);  ///< degrees
  void PointerLeft();

  // The map's popup menu.
  void OfferZoneAt(double lat, double lng);  ///< degrees; the popup is about to open there
  void OfferNone();                          ///< it opens elsewhere, or has closed

 private:
  void HandleCommands(CommandHandlers& handlers);
  void HandleDrawing(CommandHandlers& handlers);
  void ShowMenus();
  void ShowList();
  void OnPointerRests();
  ZoneMenuState MenuState() const;

  ZonesView& view_;
  EventLoop& loop_;
  QuestionQueue& questions_;
  Trace& trace_;
  MenuModel& menus_;
  Host host_;
  // From Open on.
  std::unique_ptr<Zones> zones_;
  std::unique_ptr<ZoneTransfer> transfer_;
  std::unique_ptr<ZoneListModel> list_;

  double pointerLat_ = 0;
  double pointerLng_ = 0;
  std::unique_ptr<Timer> pointerRest_;
};

}  // namespace pallomir
