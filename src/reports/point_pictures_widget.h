#pragma once

#include <QColor>
#include <QPainter>
#include <QRectF>

namespace pallomir {

/// The pictures of the data point tables, drawn in the middle of `room` so that they are sharp at any scale.
/// Numbers as in PointTableRow; one that has no picture draws nothing.

/// An arrow that points to the heading.
void PaintHeading(QPainter& painter, const QRectF& room, int imgDir, const QColor& colour);

/// The rings that the point has on the map, with a dot in the blue one and a cross in the red one.
void PaintStatus(QPainter& painter, const QRectF& room, int imgAPt, const QColor& ground);

}  // namespace pallomir
