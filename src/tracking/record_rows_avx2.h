#pragma once

#include <span>

#include "base/bytes.h"
#include "base/data_point.h"

namespace pallomir {

/// RowsFromRecords for machines that have HasAvx2().
void RowsByAvx2(ByteView records, std::span<DataPoint> rows);

}  // namespace pallomir
