#include "zones/plane_grid.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace pallomir {
namespace {

// Cells that a line passes within this part of a cell's size, or within kPlaneMargin, count as near it.
constexpr double kCellMargin = 1e-6;

}  // namespace

PlaneGrid::PlaneGrid(const PlaneBox& area, long cellsAcross)
    : area_(area),
      cellsAcross_(cellsAcross),
      cellsPerX_(static_cast<double>(cellsAcross) / (area.right - area.left)),
      cellsPerY_(static_cast<double>(cellsAcross) / (area.bottom - area.top)),
      cellMargin_(std::max(kCellMargin, kPlaneMargin * std::max(cellsPerX_, cellsPerY_))) {}

PlanePoint PlaneGrid::MiddleOf(std::size_t cell) const {
  const std::size_t row = cell / CellsAcross(), column = cell % CellsAcross();
  return {area_.left + (static_cast<double>(column) + 0.5) / cellsPerX_,
          area_.top + (static_cast<double>(row) + 0.5) / cellsPerY_};
}

// Row by row, all in units of cells.
void PlaneGrid::AddCellsAlong(PlanePoint a, PlanePoint b, std::vector<std::uint32_t>& cells) const {
  if (a.y > b.y) std::swap(a, b);
  const double ax = (a.x - area_.left) * cellsPerX_, bx = (b.x - area_.left) * cellsPerX_;
  const double ay = (a.y - area_.top) * cellsPerY_, by = (b.y - area_.top) * cellsPerY_;
  const auto most = static_cast<double>(cellsAcross_);
  const auto firstRow = static_cast<long>(std::floor(std::clamp(ay - cellMargin_, -1.0, most)));
  const auto lastRow = static_cast<long>(std::floor(std::clamp(by + cellMargin_, -1.0, most)));
  const double slope = by - ay > cellMargin_ ? (bx - ax) / (by - ay) : 0;
  for (long row = firstRow; row <= lastRow; ++row) {
    double left = std::min(ax, bx), right = std::max(ax, bx);
    if (slope != 0) {
      const double atTop = ax + (std::max(static_cast<double>(row) - cellMargin_, ay) - ay) * slope;
      const double atBottom = ax + (std::min(static_cast<double>(row) + 1 + cellMargin_, by) - ay) * slope;
      left = std::max(left, std::min(atTop, atBottom));
      right = std::min(right, std::max(atTop, atBottom));
    }
    AddRow(row, left, right, cells);
  }
}

void PlaneGrid::AddRow(long row, double left, double right, std::vector<std::uint32_t>& cells) const {
  if (row < 0 || row >= cellsAcross_) return;
  const auto most = static_cast<double>(cellsAcross_);
  const long first = static_cast<long>(std::floor(std::clamp(left - cellMargin_, 0.0, most)));
  const long last = static_cast<long>(std::floor(std::clamp(right + cellMargin_, -1.0, most - 1)));
  for (long column = first; column <= last; ++column)
    cells.push_back(static_cast<std::uint32_t>(row * cellsAcross_ + column));
}

}  // namespace pallomir
