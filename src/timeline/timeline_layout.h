#pragma once

#include "platform/geometry.h"

namespace pallomir {

/// Lengths of the timeline are given in twips.
inline constexpr int kTwipsPerPixel = 15;

/// Where the rows of the timeline lie, in pixels of its whole content, scrolled or not. Row i = 1, 2 ... has
/// a time scale with its data strip below it.
class TimelineLayout {
 public:
  TimelineLayout() = default;
  /// `frameHeight` is that of the content; the rows' height follows from it.
  TimelineLayout(int frameWidth, int frameHeight, int rows);

  int Rows() const { return rows_; }
  int ScaleWidth() const { return scaleWidth_; }  ///< columns of the scale and of each strip
  PixelRect Time(int row) const;                  ///< `picTime(row)`
  PixelRect Data(int row) const;                  ///< `picData(row)`

  /// The row whose scale or strip has a pixel at this point; 0 beside and between them.
  int RowAt(int x, int y) const;

 private:
  int rows_ = 0;
  int scaleWidth_ = 0;
  int dataHeight_ = 0;
};

/// What lies above the first row: the tick labels. It stays in place when the rows scroll.
int TimelineHeaderHeight();

/// The height that the rows and their header need; 0 without rows.
int TimelineContentHeight(int rows);

/// The height they get: what they need, but at most a third of the window. The rest is scrolled.
int TimelineFrameHeight(int rows, int windowHeight);

/// A box of this size beside the pointer, inside `area` where it fits.
PixelRect PlaceBeside(int pointerX, int pointerY, const PixelSize& box, const PixelRect& area);

}  // namespace pallomir
