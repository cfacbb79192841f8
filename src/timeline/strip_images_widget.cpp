#include "timeline/strip_images_widget.h"

#include <algorithm>
#include <cstring>

namespace pallomir {
namespace {

constexpr QRgb kPaper = qRgb(255, 255, 255);
constexpr QRgb kStrip = qRgb(255, 192, 192);
constexpr QRgb kMark = qRgb(255, 0, 0);
constexpr QRgb kTick = qRgb(0, 0, 0);

// Fills the columns and rows of device-independent pixels from `left` and `top` on.
class ColumnPainter {
 public:
  ColumnPainter(int width, int height, double pixelRatio)
      : ratio_(pixelRatio), image_(Device(width), Device(height), QImage::Format_RGB32) {
    image_.setDevicePixelRatio(pixelRatio);
    image_.fill(kPaper);
  }

  void Fill(int left, int right, int top, int bottom, QRgb colour) {
    const int end = std::min(Device(right), image_.width());
    for (int y = Device(top); y < std::min(Device(bottom), image_.height()); ++y) {
      QRgb* line = Line(y);
      std::fill(line + std::min(Device(left), end), line + end, colour);
    }
  }

  // The lines from `top` down all show what the first of them shows.
  void RepeatLine(int top) {
    const int first = Device(top);
    for (int y = first + 1; y < image_.height(); ++y)
      std::memcpy(Line(y), Line(first), static_cast<std::size_t>(image_.width()) * sizeof(QRgb));
  }

  QImage Take() { return std::move(image_); }

 private:
  int Device(int pixels) const { return qRound(pixels * ratio_); }
  QRgb* Line(int y) { return reinterpret_cast<QRgb*>(image_.scanLine(y)); }

  double ratio_;
  QImage image_;
};

void DrawTicks(ColumnPainter& painter, const TimelinePicture& picture) {
  if (!picture.scale) return;
  for (const Tick& tick : picture.scale->ticks)
    painter.Fill(tick.column, tick.column + 1, 0, tick.height, kTick);
}

// Both begin below the strip's first line, which stays free.
void DrawMarks(ColumnPainter& painter, const ColumnTable& columns, int width) {
  painter.Fill(0, width, 1, 2, kStrip);
  int x = 0;
  for (const std::int32_t point : columns) {
    if (point != kNoPoint) painter.Fill(x, x + 1, 1, 2, kMark);
    ++x;
  }
  painter.RepeatLine(1);
}

}  // namespace

QImage TimeScaleImage(const TimelinePicture& picture, int height, double pixelRatio) {
  if (picture.width <= 0 || height <= 0) return {};
  ColumnPainter painter(picture.width, height, pixelRatio);
  DrawTicks(painter, picture);
  return painter.Take();
}

QImage DataStripImage(const TimelinePicture& picture, std::size_t row, int height, double pixelRatio) {
  if (picture.width <= 0 || height <= 1 || row >= picture.rows.size()) return {};
  ColumnPainter painter(picture.width, height, pixelRatio);
  DrawMarks(painter, picture.rows[row].columns, picture.width);
  DrawTicks(painter, picture);
  return painter.Take();
}

}  // namespace pallomir
