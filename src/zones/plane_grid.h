#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace pallomir {

/// A place on the projected plane: x from 0 at longitude -180 to 1 at 180, y from about 0 in the north to 1.
struct PlanePoint {
  double x = 0;
  double y = 0;
};

/// A box on that plane.
struct PlaneBox {
  double left = 0;
  double right = 0;
  double top = 0;
  double bottom = 0;

  bool Contains(PlanePoint place) const {
    return place.x >= left && place.x <= right && place.y >= top && place.y <= bottom;
  }
};

/// A box cut into as many rows as columns, for questions that most cells answer at once.
class PlaneGrid {
 public:
  /// Without cells: every place lies outside.
  PlaneGrid() = default;
  /// `cellsAcross` is at least 1, the box has an extent in both directions.
  PlaneGrid(const PlaneBox& area, long cellsAcross);

  bool IsEmpty() const { return cellsAcross_ == 0; }
  std::size_t CellCount() const { return static_cast<std::size_t>(cellsAcross_ * cellsAcross_); }
  std::size_t CellsAcross() const { return static_cast<std::size_t>(cellsAcross_); }

  /// Nothing outside of the box.
  std::optional<std::size_t> CellOf(PlanePoint place) const {
    const bool isInside =
        place.x >= area_.left && place.x < area_.right && place.y >= area_.top && place.y < area_.bottom;
    if (!isInside) return std::nullopt;
    const long column = static_cast<long>((place.x - area_.left) * cellsPerX_);
    const long row = static_cast<long>((place.y - area_.top) * cellsPerY_);
    const long last = cellsAcross_ - 1;
    return static_cast<std::size_t>((row < last ? row : last) * cellsAcross_ +
                                    (column < last ? column : last));
  }
  PlanePoint MiddleOf(std::size_t cell) const;

  /// Whether the line from `a` to `b` lies on one side of the box.
  bool PassesBeside(PlanePoint a, PlanePoint b) const {
    return (a.x < area_.left && b.x < area_.left) || (a.x > area_.right && b.x > area_.right) ||
           (a.y < area_.top && b.y < area_.top) || (a.y > area_.bottom && b.y > area_.bottom);
  }

  /// Adds the cells that the line from `a` to `b` comes near. "Near" is more than rounding can move the line.
  void AddCellsAlong(PlanePoint a, PlanePoint b, std::vector<std::uint32_t>& cells) const;

 private:
  void AddRow(long row, double left, double right, std::vector<std::uint32_t>& cells) const;

  PlaneBox area_;
  long cellsAcross_ = 0;
  double cellsPerX_ = 0;
  double cellsPerY_ = 0;
  double cellMargin_ = 0;  // cells
};

/// Coordinates lie between 0 and 1, so that no rounding of the zones' rule moves an edge by as much.
inline constexpr double kPlaneMargin = 1e-12;

}  // namespace pallomir
