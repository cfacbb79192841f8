#include "hotspots/hotspot_editors.h"

#include <iterator>
#include <utility>

namespace pallomir {
namespace {

constexpr int kProtocolWidth = 10;

ListGridSetup HotspotSetup() {
  ListGridSetup setup;
  setup.hasCheckBoxes = false;
  setup.hasAddRow = true;
  setup.fewestToDelete = 1;
  setup.mostRows = kMaxHotspots;
  setup.messageTitle = "Pallomir key entry error";
  return setup;
}

ListGridColumn SsidColumn(const char* placeholder) {
  ListGridColumn column{"txtSSID", "Network name (SSID)", placeholder};
  column.rules.limit = kMaxSsidSize;
  column.rules.refusal = "Enter up to 32 characters";
  return column;
}

ListGridColumn KeyColumn() {
  ListGridColumn column{"txtPassword", "Key", "Enter This Wi-Fi HotSpot's Password Here"};
  column.rules.limit = kMaxKeySize;
  column.rules.refusal = "Enter up to 64 characters";
  return column;
}

ListGridColumn ProtocolColumn() {
  ListGridColumn column{"txtProtocol", "Protocol", "Protocol", kProtocolWidth};
  column.choices.assign(std::begin(kHotspotProtocols), std::end(kHotspotProtocols));
  return column;
}

// The text of a box, or nothing while its placeholder stands there.
std::string Entered(const ListGrid& grid, std::size_t row, std::size_t column) {
  return grid.IsPlaceholder(row, column) ? std::string() : grid.Row(row).texts[column];
}

}  // namespace

ListGrid OpenHotspotEditor(const std::vector<std::string>& ssids) {
  ListGridSetup setup = HotspotSetup();
  setup.columns = {SsidColumn("Add New Wi-Fi HotSpot's Name (SSID) Here")};
  ListGrid grid(std::move(setup));
  for (const std::string& ssid : ssids) grid.Fill({false, {ssid}});
  return grid;
}

ListGrid OpenSecureHotspotEditor(const std::vector<SecureHotspot>& hotspots) {
  ListGridSetup setup = HotspotSetup();
  ListGridColumn ssid = SsidColumn("Enter This Wi-Fi HotSpot's Name (SSID) Here");
  ssid.width = static_cast<int>(ssid.placeholder.size());
  setup.columns = {std::move(ssid), KeyColumn(), ProtocolColumn()};
  ListGrid grid(std::move(setup));
  for (const SecureHotspot& hotspot : hotspots)
    grid.Fill({false, {hotspot.ssid, hotspot.key, hotspot.protocol}});
  return grid;
}

std::vector<std::string> HotspotsOfEditor(const ListGrid& grid) {
  std::vector<std::string> ssids;
  for (std::size_t row = 1; row <= grid.ListedCount(); ++row) {
    std::string ssid = Entered(grid, row, kHotspotSsidColumn);
    if (!ssid.empty()) ssids.push_back(std::move(ssid));
  }
  return ssids;
}

std::vector<SecureHotspot> SecureHotspotsOfEditor(const ListGrid& grid) {
  std::vector<SecureHotspot> hotspots;
  for (std::size_t row = 1; row <= grid.ListedCount(); ++row) {
    SecureHotspot hotspot{Entered(grid, row, kHotspotSsidColumn), std::string(kDefaultHotspotProtocol),
                          Entered(grid, row, kHotspotKeyColumn)};
    if (!grid.IsPlaceholder(row, kHotspotProtocolColumn))
      hotspot.protocol = grid.Row(row).texts[kHotspotProtocolColumn];
    if (!hotspot.ssid.empty()) hotspots.push_back(std::move(hotspot));
  }
  return hotspots;
}

}  // namespace pallomir
