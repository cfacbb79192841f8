#pragma once

#include <span>

#include "base/bytes.h"
#include "reports/search_area.h"

namespace pallomir {

/// Whether the times of a data file nowhere descend and none of its positions lies in the box, which is not
/// empty. `file` is whole records.
bool LiesOutside(ByteView file, const PositionBox& box);

/// The ways to compute it that this machine knows: the plain one first, the one that is used last.
using OutsideCheck = bool (*)(ByteView file, const PositionBox& box);
std::span<const OutsideCheck> OutsideChecks();

}  // namespace pallomir
