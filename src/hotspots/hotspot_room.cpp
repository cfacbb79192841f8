#include "hotspots/hotspot_room.h"

namespace pallomir {
namespace {

constexpr char kPermitted[] = "Permitted";
constexpr char kProhibited[] = "Prohibited";

}  // namespace

void HotspotRoom::ReadLists() {
  stored_.hotspots.Read();
  stored_.secureHotspots.Read();
  TakeLists();
}

// As they are stored, also after Apply: what the stored form can't hold is not shown either.
void HotspotRoom::TakeLists() {
  hotspots_ = ParseHotspots(stored_.hotspots.Value());
  secureHotspots_ = ParseSecureHotspots(stored_.secureHotspots.Value());
  changed();
}

void HotspotRoom::HotSpotsChange(bool toggle) {
  stored_.mode.Store(IsProhibited() != toggle ? kProhibited : kPermitted);
  changed();
}

bool HotspotRoom::IsProhibited() const { return stored_.mode.Value() == kProhibited; }

void HotspotRoom::Apply(const std::vector<std::string>& ssids) {
  if (closed_ || ssids == hotspots_) return;
  stored_.hotspots.Store(EncodeHotspots(ssids));
  TakeLists();
}

void HotspotRoom::ApplySecure(const std::vector<SecureHotspot>& hotspots) {
  if (closed_ || hotspots == secureHotspots_) return;
  stored_.secureHotspots.Store(EncodeSecureHotspots(hotspots));
  TakeLists();
}

}  // namespace pallomir
