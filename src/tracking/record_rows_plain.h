#pragma once

#include <span>

#include "base/bytes.h"
#include "base/data_point.h"

namespace pallomir {

/// RowsFromRecords for any machine, and the ends that a vector form leaves over.
void RowsPlainly(ByteView records, std::span<DataPoint> rows);

}  // namespace pallomir
