#include "station/store/open_store.h"

#include "station/store/data_folder.h"

namespace pallomir::station {

std::unique_ptr<UnitStore> OpenStore(const std::filesystem::path& place, Log log) {
  return std::make_unique<DataFolder>(place, std::move(log));
}

}  // namespace pallomir::station
