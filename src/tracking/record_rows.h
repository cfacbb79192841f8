#pragma once

#include <span>

#include "base/bytes.h"
#include "base/data_point.h"

namespace pallomir {

/// The records of a packet (14 bytes each, newest first) as rows that ascend in time; x holds the latitude
/// and y the longitude as they came. `rows` has a place for each record.
void RowsFromRecords(ByteView records, std::span<DataPoint> rows);

/// The ways to do so that this machine knows: the plain one first, the one that is used last.
using RecordKernel = void (*)(ByteView records, std::span<DataPoint> rows);
std::span<const RecordKernel> RecordKernels();

}  // namespace pallomir
