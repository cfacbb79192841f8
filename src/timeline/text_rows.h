#pragma once

#include <span>
#include <vector>

#include "platform/geometry.h"

namespace pallomir {

/// Places for boxes in rows from the area's top down, each row about `centre` as far as the area allows. A
/// box wider than the area is cut to it. Boxes of rows that don't fit above the area's bottom get no place;
/// the first row always does.
std::vector<PixelRect> PlaceInRows(std::span<const PixelSize> boxes, const PixelRect& area, int centre,
                                   int gap);

/// The part of a map of this size where texts can stand without covering the map's own controls: between
/// those in its upper corners, or below them where little is left between.
PixelRect AreaForTexts(const PixelSize& map);

}  // namespace pallomir
