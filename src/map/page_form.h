#pragma once

#include <string>

#include "map/map_view.h"
#include "platform/browser.h"

namespace pallomir {

/// The layers over the base map that the page can hide.
enum class PageLayer { kMapData, kTrackingData, kZones };

/// What the user chose of the map. A new page begins as this does.
struct PageChoices {
  bool mapData = true;
  bool trackingData = true;
  bool zones = true;
  std::string mapType = "Map";  ///< or "Satellite", "Hybrid", "Terrain"
  bool panorama = false;
  bool streetView = false;
};

/// All that the client tells the page: each function writes one field of the page's form. A write that finds
/// no page is lost.
class PageForm {
 public:
  /// `browser` outlives the form.
  explicit PageForm(Browser& browser) : browser_(browser) {}

  // What the user chose.
  void ShowLayer(PageLayer layer, bool shown);
  void ShowMapType(const std::string& type);
  void ShowPanorama(bool shown);
  void ShowStreetView(bool shown);
  /// Writes what a new page has otherwise.
  void Restore(const PageChoices& choices);

  /// Asks for the address of the place that was clicked last; it comes as a geocode answer.
  void AskForAddress();

  // The view.
  void SetSize(PixelSize map);
  void Pan(double lat, double lng);    ///< degrees
  void FirstFit(const MapView& view);  ///< to its centre and its requested zoom
  void Fit(const MapView& view);

  // The tiles.
  void AnnounceGeneration(const std::string& digits);  ///< four hexadecimal ones
  void AnswerTrackTile(const std::string& path);
  void AnswerZoneTile(const std::string& path);

  /// The zones keep their fields themselves; `field` is one of those in page_fields.h.
  void WriteZones(const char* field, const std::string& text);

 private:
  Browser& browser_;
};

}  // namespace pallomir
