#include "window/normal_placement.h"

#include <cstdlib>
#include <utility>

namespace pallomir {
namespace {

enum class Share { kNone, kHalf, kWhole };

// Of an odd length the halves differ by one.
Share ShareOf(int start, int length, int areaStart, int areaLength) {
  const bool atStart = start == areaStart;
  const bool atEnd = start + length == areaStart + areaLength;
  if (atStart && atEnd) return Share::kWhole;
  return (atStart || atEnd) && std::abs(2 * length - areaLength) <= 1 ? Share::kHalf : Share::kNone;
}

}  // namespace

void NormalPlacement::Note(const PixelRect& bounds) {
  if (last_ == bounds) return;
  before_ = std::exchange(last_, bounds);
}

void NormalPlacement::Disown(const PixelRect& bounds) {
  if (last_ == bounds) last_ = std::exchange(before_, std::nullopt);
}

std::optional<PixelRect> NormalPlacement::Take() {
  before_.reset();
  return std::exchange(last_, std::nullopt);
}

bool IsTileOf(const PixelRect& bounds, const PixelRect& area) {
  const Share across = ShareOf(bounds.left, bounds.width, area.left, area.width);
  const Share down = ShareOf(bounds.top, bounds.height, area.top, area.height);
  return across != Share::kNone && down != Share::kNone && (across == Share::kHalf || down == Share::kHalf);
}

bool IsAboutAsLargeAs(const PixelRect& bounds, const PixelRect& area) {
  return 4 * bounds.width >= 3 * area.width && 4 * bounds.height >= 3 * area.height;
}

bool IsPlacedByDesktop(const MainWindow& window) {
  return window.HasWindowManager() &&
         (window.IsMaximisedOneWay() || IsTileOf(window.Bounds(), window.WorkArea()));
}

void SavePlacement(WindowChoices& stored, const PixelRect& bounds, bool knowsPosition) {
  if (knowsPosition) {
    stored.left.StoreIfOther(bounds.left);
    stored.top.StoreIfOther(bounds.top);
  }
  stored.width.StoreIfOther(bounds.width);
  stored.height.StoreIfOther(bounds.height);
}

}  // namespace pallomir
