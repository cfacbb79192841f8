#pragma once

#include <QAbstractButton>
#include <QImage>
#include <QString>
#include <QWidget>
#include <functional>
#include <vector>

#include "platform/geometry.h"
#include "timeline/data_strip.h"
#include "timeline/tick_scale.h"

namespace pallomir {

/// A picture painted from an off-screen image, which is drawn when it is first needed after it was told to.
class ImageWidget : public QWidget {
 public:
  ImageWidget(QWidget* parent, const QString& name);

  /// Draws the image for a screen of this pixel ratio. A null image paints nothing.
  using Draw = std::function<QImage(double pixelRatio)>;
  void SetImage(Draw draw);
  void Clear() { SetImage({}); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Draw draw_;
  QImage image_;
};

/// The mark in a unit's colour at the left of its row, `Pointer(i)`.
class UnitMark : public QWidget {
 public:
  UnitMark(QWidget* parent, const QString& name);
  void SetColour(std::uint32_t rgb);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  std::uint32_t colour_ = 0;
};

/// The controls of one row.
class StripRowWidgets {
 public:
  /// `row` counts from 1.
  StripRowWidgets(QWidget* parent, int row);
  ~StripRowWidgets();
  StripRowWidgets(const StripRowWidgets&) = delete;
  StripRowWidgets& operator=(const StripRowWidgets&) = delete;

  /// Places relative to the parent. Clears both images.
  void Place(const PixelRect& time, const PixelRect& data);
  void Show(const TimelinePicture& picture);

  QWidget* Time() const { return picTime_; }
  QWidget* Data() const { return picData_; }

 private:
  std::size_t index_;
  ImageWidget* picTime_;
  ImageWidget* picData_;
  UnitMark* pointer_;
};

/// A tick label, `ScaleMark(column)`. A label that would cover a coarser one or stand beside its tick isn't
/// shown.
struct ScaleMark {
  int column = 0;
  QString text;
  QRect place;  ///< in the strip
  bool shown = false;
};

/// The tick labels over the rows. They belong to a strip of `stripWidth` that begins at `stripLeft`.
class TickLabels : public QWidget {
 public:
  explicit TickLabels(QWidget* parent);
  /// `right` ends the place where labels can stand.
  void SetTicks(const std::vector<Tick>& ticks, int stripLeft, int stripWidth, int right);
  const std::vector<ScaleMark>& Marks() const { return marks_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QRect PlaceOf(int centre, const QString& text, int right) const;

  std::vector<ScaleMark> marks_;
};

/// `imgReload`: an arrow in a circle, drawn in the colours of the desktop.
class ReloadImage : public QAbstractButton {
 public:
  explicit ReloadImage(QWidget* parent);
  QSize sizeHint() const override { return {18, 18}; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
};

/// `shpZoomInterval`: a rectangle in the colour of a selection; the mouse goes through it.
class ZoomInterval : public QWidget {
 public:
  explicit ZoomInterval(QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace pallomir
