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
  firstColumn_ = TileIndex(x.first);
  firstRow_ = TileIndex(y.first);
  columns_ = TileIndex(x.last) - firstColumn_ + 1;
  rows_ = TileIndex(y.last) - firstRow_ + 1;
  stride_ = std::ptrdiff_t{columns_} * kTileSize + kRowGap;
  const std::size_t size = static_cast<std::size_t>(stride_) * static_cast<std::size_t>(rows_) * kTileSize;
  plane_.reset(static_cast<std::uint8_t*>(std::calloc(size, 1)));
  if (!plane_) throw std::bad_alloc();
#ifdef __linux__
  // A track that runs down the plane touches another page with every row. A hint: what becomes of it is no
  // matter.
  const auto start = reinterpret_cast<std::uintptr_t>(plane_.get());
  const std::uintptr_t firstPage = (start + kHugePage - 1) / kHugePage * kHugePage;
  if (start + size > firstPage)
    ::madvise(reinterpret_cast<void*>(firstPage), start + size - firstPage, MADV_HUGEPAGE);
#endif
}

std::vector<TilePlace> TrackMarks::TouchedTiles() const {
  std::vector<TilePlace> touched;
  for (std::int32_t row = firstRow_; row < firstRow_ + rows_; ++row) {
    for (std::int32_t column = firstColumn_; column < firstColumn_ + columns_; ++column) {
      if (HoldsMark(PixelsOf({column, row}))) touched.push_back({column, row});
    }
  }
  return touched;
}

TilePixels TrackMarks::PixelsOf(TilePlace tile) const {
  const std::ptrdiff_t offset =
      Offset(std::int64_t{tile.column} * kTileSize, std::int64_t{tile.row} * kTileSize);
  return {plane_.get() + offset, stride_};
}

}  // namespace pallomir
