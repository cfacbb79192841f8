#include "map/track_marks.h"

#include <cstring>
#include <new>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace pallomir {
namespace {

constexpr std::size_t kHugePage = std::size_t{2} << 20;
// Rows that lie a power of two apart would share the same few cache lines.
constexpr std::ptrdiff_t kRowGap = 64;

bool HoldsMark(TilePixels tile) {
  for (int y = 0; y < kTileSize; ++y, tile.rows += tile.stride) {
    std::uint64_t any = 0;
    for (int x = 0; x < kTileSize; x += 8) {
      std::uint64_t eight;
      std::memcpy(&eight, tile.rows + x, sizeof eight);
      any |= eight;
    }
    if (any != 0) return true;
  }
  return false;
}

std::int32_t TileIndex(std::int64_t pixel) { return static_cast<std::int32_t>(pixel / kTileSize); }

}  // namespace

TrackMarks::TrackMarks(PixelRange x, PixelRange y) {
  if (x.last < x.first || y.last < y.first) return;
  first_ = {TileIndex(x.first), TileIndex(y.first)};
  columns_ = TileIndex(x.last) - first_.column + 1;
  rows_ = TileIndex(y.last) - first_.row + 1;
  const std::ptrdiff_t stride = std::ptrdiff_t{columns_} * kTileSize + kRowGap;
  const std::size_t size = static_cast<std::size_t>(stride) * static_cast<std::size_t>(rows_) * kTileSize;
  memory_.reset(static_cast<std::uint8_t*>(std::calloc(size, 1)));
  if (!memory_) throw std::bad_alloc();
  plane_ = {memory_.get(), stride, std::int64_t{first_.column} * kTileSize,
            std::int64_t{first_.row} * kTileSize};
#ifdef __linux__
  // A track that runs down the plane touches another page with every row. A hint: what becomes of it is no
  // matter.
  const auto start = reinterpret_cast<std::uintptr_t>(memory_.get());
  const std::uintptr_t firstPage = (start + kHugePage - 1) / kHugePage * kHugePage;
  if (start + size > firstPage)
    ::madvise(reinterpret_cast<void*>(firstPage), start + size - firstPage, MADV_HUGEPAGE);
#endif
}

std::vector<TilePlace> TrackMarks::TouchedTiles() const {
  std::vector<TilePlace> touched;
  for (std::int32_t row = first_.row; row < first_.row + rows_; ++row) {
    for (std::int32_t column = first_.column; column < first_.column + columns_; ++column) {
      if (HoldsMark(PixelsOf({column, row}))) touched.push_back({column, row});
    }
  }
  return touched;
}

TilePixels TrackMarks::PixelsOf(TilePlace tile) const {
  return {plane_.At(std::int64_t{tile.column} * kTileSize, std::int64_t{tile.row} * kTileSize),
          plane_.stride};
}

}  // namespace pallomir
