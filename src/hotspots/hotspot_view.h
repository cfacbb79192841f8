#pragma once

#include <string>
#include <vector>

#include "hotspots/hotspot_lists.h"

namespace pallomir {

/// The editors of the Wi-Fi lists, modeless; one that is open comes forward and keeps what was entered.
class HotspotView {
 public:
  virtual ~HotspotView() = default;

  virtual void EditHotspots(const std::vector<std::string>& ssids) = 0;
  virtual void EditSecureHotspots(const std::vector<SecureHotspot>& hotspots) = 0;
};

}  // namespace pallomir
