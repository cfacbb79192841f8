#pragma once

#include <filesystem>
#include <memory>

#include "station/common/log.h"
#include "station/store/unit_store.h"

namespace pallomir::station {

/// The store at `place`, which need not exist yet. The only function that knows what a store is kept in: a
/// folder of data files. `log` is told of what in it can't be used.
std::unique_ptr<UnitStore> OpenStore(const std::filesystem::path& place, Log log);

}  // namespace pallomir::station
