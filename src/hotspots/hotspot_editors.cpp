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

// Not a text that was stored and happens to read like the placeholder.
bool IsUntouched(const ListGrid& grid, std::size_t row, std::size_t column) {
  return grid.IsPlaceholder(row, column) && !grid.IsAsFilled(row, column);
}

std::string Entered(const ListGrid& grid, std::size_t row, std::size_t column) {
  return IsUntouched(grid, row, column) ? std::string() : grid.Result(row, column);
}

// Whether a network has been entered in the row. One that was stored without a name stays untouched.
bool HasNetwork(const ListGrid& grid, std::size_t row) {
  return Entered(grid, row, kHotspotSsidColumn).find_first_not_of(' ') != std::string::npos ||
         grid.IsAsFilled(row, kHotspotSsidColumn);
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
    if (HasNetwork(grid, row)) ssids.push_back(Entered(grid, row, kHotspotSsidColumn));
  }
  return ssids;
}

std::vector<SecureHotspot> SecureHotspotsOfEditor(const ListGrid& grid) {
  std::vector<SecureHotspot> hotspots;
  for (std::size_t row = 1; row <= grid.ListedCount(); ++row) {
    if (!HasNetwork(grid, row)) continue;
    SecureHotspot hotspot{Entered(grid, row, kHotspotSsidColumn), std::string(kDefaultHotspotProtocol),
                          Entered(grid, row, kHotspotKeyColumn)};
    if (!IsUntouched(grid, row, kHotspotProtocolColumn))
      hotspot.protocol = grid.Result(row, kHotspotProtocolColumn);
    hotspots.push_back(std::move(hotspot));
  }
  return hotspots;
}

}  // namespace pallomir
