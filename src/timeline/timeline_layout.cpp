#include "timeline/timeline_layout.h"

#include <algorithm>

namespace pallomir {
namespace {

// Twips.
constexpr int kLeft = 150;
constexpr int kBothMargins = 2 * kLeft;
constexpr int kHeader = 300;
constexpr int kRowPitch = 315;
constexpr int kTimeHeight = 150;
constexpr int kRowGap = 60;

constexpr int kPointerGap = 12;  // pixels between the pointer and a box beside it

constexpr int Pixels(int twips) { return twips / kTwipsPerPixel; }

}  // namespace

TimelineLayout::TimelineLayout(int frameWidth, int frameHeight, int rows) : rows_(std::max(0, rows)) {
  scaleWidth_ = std::max(0, Pixels(frameWidth * kTwipsPerPixel - kBothMargins));
  if (rows_ == 0) return;
  const double forRow = static_cast<double>(frameHeight * kTwipsPerPixel - kHeader) / rows_;
  dataHeight_ = std::max(0, Pixels(static_cast<int>((forRow - kRowGap) / 2)));
}

PixelRect TimelineLayout::Time(int row) const {
  return {Pixels(kLeft), Pixels((row - 1) * kRowPitch + kHeader), scaleWidth_, Pixels(kTimeHeight)};
}

PixelRect TimelineLayout::Data(int row) const {
  const PixelRect time = Time(row);
  return {time.left, time.top + time.height, scaleWidth_, dataHeight_};
}

int TimelineLayout::RowAt(int x, int y) const {
  const int intoRows = y - Pixels(kHeader);
  if (intoRows < 0 || x < Pixels(kLeft) || x >= Pixels(kLeft) + scaleWidth_) return 0;
  const int row = intoRows / Pixels(kRowPitch) + 1;
  const bool isBetweenRows = intoRows % Pixels(kRowPitch) >= Pixels(kTimeHeight) + dataHeight_;
  return row > rows_ || isBetweenRows ? 0 : row;
}

int TimelineHeaderHeight() { return Pixels(kHeader); }

int TimelineContentHeight(int rows) { return rows <= 0 ? 0 : Pixels(kHeader + rows * kRowPitch); }

int TimelineFrameHeight(int rows, int windowHeight) {
  return std::min(TimelineContentHeight(rows), std::max(0, windowHeight / 3));
}

PixelRect PlaceBeside(int pointerX, int pointerY, const PixelSize& box, const PixelRect& area) {
  const int right = area.left + area.width;
  const int bottom = area.top + area.height;
  int left = pointerX + kPointerGap;
  if (left + box.width > right) left = pointerX - kPointerGap - box.width;
  const int top = pointerY - kPointerGap - box.height;
  return {std::max(area.left, std::min(left, right - box.width)),
          std::max(area.top, std::min(top, bottom - box.height)), box.width, box.height};
}

}  // namespace pallomir
