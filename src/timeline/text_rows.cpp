#include "timeline/text_rows.h"

#include <algorithm>

namespace pallomir {
namespace {

// What the page's controls take, pixels: the zoom at the left, the kinds of map at the right.
constexpr int kZoomWidth = 64;
constexpr int kMapTypesWidth = 256;
constexpr int kControlsHeight = 80;

constexpr int kMargin = 4;
constexpr int kLeastBetween = 320;  // room for two texts

/// A row of boxes as wide as they are.
struct Row {
  std::size_t end = 0;  // of its boxes
  int width = 0;
  int height = 0;
};

Row RowFrom(std::size_t first, std::span<const PixelSize> boxes, int widest, int gap) {
  Row row{first, 0, 0};
  for (; row.end < boxes.size(); ++row.end) {
    const PixelSize& box = boxes[row.end];
    const int width = row.end == first ? std::min(box.width, widest) : row.width + gap + box.width;
    if (width > widest) break;
    row.width = width;
    row.height = std::max(row.height, box.height);
  }
  return row;
}

}  // namespace

std::vector<PixelRect> PlaceInRows(std::span<const PixelSize> boxes, const PixelRect& area, int centre,
                                   int gap) {
  std::vector<PixelRect> places;
  int top = area.top;
  while (places.size() < boxes.size()) {
    const Row row = RowFrom(places.size(), boxes, area.width, gap);
    if (!places.empty() && top + row.height > area.top + area.height) break;
    int left = std::max(area.left, std::min(centre - row.width / 2, area.left + area.width - row.width));
    while (places.size() < row.end) {
      const PixelSize& box = boxes[places.size()];
      places.push_back({left, top, std::min(box.width, row.width), box.height});
      left += box.width + gap;
    }
    top += row.height + gap;
  }
  return places;
}

PixelRect AreaForTexts(const PixelSize& map) {
  const int between = map.width - kZoomWidth - kMapTypesWidth;
  const int bottom = map.height - kMargin;
  if (between >= kLeastBetween) return {kZoomWidth, kMargin, between, std::max(0, bottom - kMargin)};
  return {kMargin, kControlsHeight, std::max(0, map.width - 2 * kMargin),
          std::max(0, bottom - kControlsHeight)};
}

}  // namespace pallomir
