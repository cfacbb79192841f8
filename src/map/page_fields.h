#pragma once

#include <filesystem>
#include <string>

#include "map/map_view.h"

namespace pallomir {

/// The fields of the page's form that the host writes; case counts.
namespace field {
inline constexpr char kWidth[] = "TxtX";
inline constexpr char kHeight[] = "TxtY";
inline constexpr char kFit[] = "TxtF";
inline constexpr char kFirstFit[] = "TxtL";
inline constexpr char kPan[] = "TxtP";
inline constexpr char kGeneration[] = "TxtR";
inline constexpr char kTrackTile[] = "TxtTT";
inline constexpr char kZoneTile[] = "TxtTZ";
inline constexpr char kMapData[] = "TxtM";
inline constexpr char kTrackingData[] = "TxtT";
inline constexpr char kZonesShown[] = "TxtZ";
inline constexpr char kMapType[] = "TxtMT";
inline constexpr char kStreetView[] = "TxtSV";
inline constexpr char kGeocode[] = "TxtG";
inline constexpr char kPanorama[] = "txtPn";
inline constexpr char kZoneList[] = "TxtZL";
inline constexpr char kZoneNames[] = "TxtZD";
inline constexpr char kZoneNew[] = "TxtZN";
inline constexpr char kZoneEdit[] = "TxtZE";
inline constexpr char kZoneFinish[] = "TxtZF";
inline constexpr char kZoneCancel[] = "TxtZC";
inline constexpr char kZoneUndo[] = "TxtZU";
inline constexpr char kZoneCrosshair[] = "TxtZX";
inline constexpr char kZoneCorner[] = "TxtZV";
}  // namespace field

/// Latitude and longitude in degrees, 22 characters: "+040.712800-074.006000".
std::string PlaceText(double lat, double lng);

/// The requested zoom in two digits and the centre, 24 characters: what a fit writes.
std::string FitText(const MapView& view);

/// Size of the page's map for a browser of this size.
PixelSize PageMapSize(PixelSize browser);

/// The map page's address: "/fullscreen/index.php" on the web site, with the map's size. The browser supplies
/// the scheme.
std::string MapPageAddress(const std::string& webSite, PixelSize browser);

/// The page in the application folder that stands in for a lost map page. It says which web site is missing,
/// for what reason, and how to start it.
std::string LostPageAddress(const std::filesystem::path& applicationFolder, const std::string& webSite,
                            const std::string& reason);

/// What the address of every page command begins with.
std::string CommandPrefix(const std::string& webSite);

}  // namespace pallomir
