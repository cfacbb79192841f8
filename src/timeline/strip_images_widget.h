#pragma once

#include <QImage>

#include "timeline/data_strip.h"

namespace pallomir {

/// The off-screen images of a row, drawn for a screen with `pixelRatio` pixels to a device-independent one.
/// Column x fills round(x · ratio) to round((x + 1) · ratio), so that no mark is blurred or lost.

/// The ticks alone; the same for every row. `height` in device-independent pixels, as below.
QImage TimeScaleImage(const TimelinePicture& picture, int height, double pixelRatio);

/// The marks of the row's points with the ticks over them. `row` counts from 0.
QImage DataStripImage(const TimelinePicture& picture, std::size_t row, int height, double pixelRatio);

}  // namespace pallomir
