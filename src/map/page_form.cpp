#include "map/page_form.h"

#include "map/page_fields.h"

namespace pallomir {
namespace {

const char* Flag(bool on) { return on ? "True" : "False"; }

}  // namespace

void PageForm::ShowLayer(PageLayer layer, bool shown) {
  const char* field = field::kMapData;
  if (layer == PageLayer::kTrackingData) field = field::kTrackingData;
  if (layer == PageLayer::kZones) field = field::kZonesShown;
  browser_.WriteField(field, shown ? "T" : "F");
}

void PageForm::ShowMapType(const std::string& type) { browser_.WriteField(field::kMapType, type); }
void PageForm::ShowPanorama(bool shown) { browser_.WriteField(field::kPanorama, Flag(shown)); }
void PageForm::ShowStreetView(bool shown) { browser_.WriteField(field::kStreetView, Flag(shown)); }

void PageForm::Restore(const PageChoices& choices) {
  const PageChoices atFirst;
  const auto restoreLayer = [this](PageLayer layer, bool shown, bool shownAtFirst) {
    if (shown != shownAtFirst) ShowLayer(layer, shown);
  };
  restoreLayer(PageLayer::kMapData, choices.mapData, atFirst.mapData);
  restoreLayer(PageLayer::kTrackingData, choices.trackingData, atFirst.trackingData);
  restoreLayer(PageLayer::kZones, choices.zones, atFirst.zones);
  if (choices.mapType != atFirst.mapType) ShowMapType(choices.mapType);
  if (choices.panorama != atFirst.panorama) ShowPanorama(choices.panorama);
  if (choices.streetView != atFirst.streetView) ShowStreetView(choices.streetView);
}

void PageForm::AskForAddress() { browser_.WriteField(field::kGeocode, Flag(true)); }

void PageForm::SetSize(PixelSize map) {
  browser_.WriteField(field::kWidth, std::to_string(map.width));
  browser_.WriteField(field::kHeight, std::to_string(map.height));
}

void PageForm::Pan(double lat, double lng) { browser_.WriteField(field::kPan, PlaceText(lat, lng)); }
void PageForm::FirstFit(const MapView& view) { browser_.WriteField(field::kFirstFit, FitText(view)); }
void PageForm::Fit(const MapView& view) { browser_.WriteField(field::kFit, FitText(view)); }

void PageForm::AnnounceGeneration(const std::string& digits) {
  browser_.WriteField(field::kGeneration, digits);
}

void PageForm::AnswerTrackTile(const std::string& path) { browser_.WriteField(field::kTrackTile, path); }
void PageForm::AnswerZoneTile(const std::string& path) { browser_.WriteField(field::kZoneTile, path); }

void PageForm::WriteZones(const char* field, const std::string& text) { browser_.WriteField(field, text); }

}  // namespace pallomir
