#pragma once

#include <functional>
#include <string>
#include <vector>

#include "hotspots/hotspot_lists.h"
#include "hotspots/hotspot_view.h"
#include "settings/stored_choices.h"

namespace pallomir {

/// The Wi-Fi networks that the mobile units may use: the lists as they are stored, their editors, and whether
/// the first one names what is permitted or what is prohibited.
class HotspotRoom {
 public:
  HotspotRoom(HotspotView& view, HotspotChoices& stored) : view_(view), stored_(stored) {}

  std::function<void()> changed;  ///< a list or the mode is another one

  void ReadLists();
  /// Takes the mode as it was read ("Permitted" or "Prohibited"; any other counts as the first), or the other
  /// one where `toggle` is set, and stores it.
  void HotSpotsChange(bool toggle);
  void Close() { closed_ = true; }  ///< nothing is stored from here on

  void Edit() { view_.EditHotspots(hotspots_); }
  void EditSecure() { view_.EditSecureHotspots(secureHotspots_); }

  // The editors' Apply. A list that was not changed is not written: the stored text may be damaged behind
  // what was shown of it.
  void Apply(const std::vector<std::string>& ssids);
  void ApplySecure(const std::vector<SecureHotspot>& hotspots);

  const std::vector<std::string>& Hotspots() const { return hotspots_; }
  const std::vector<SecureHotspot>& SecureHotspots() const { return secureHotspots_; }
  bool IsProhibited() const;

 private:
  void TakeLists();

  HotspotView& view_;
  HotspotChoices& stored_;
  bool closed_ = false;
  std::vector<std::string> hotspots_;
  std::vector<SecureHotspot> secureHotspots_;
};

}  // namespace pallomir
