#pragma once

#include <QLabel>

namespace pallomir {

/// `txtCaption`: one line of text. Without room it leaves out the program's name, then the words behind its
/// figures, then what does not fit; the tool tip has the whole. It leaves the mouse to what it lies on.
class CaptionText : public QLabel {
 public:
  explicit CaptionText(QWidget* parent);

  void Show(const QString& text);
  /// What there is room for.
  QString Shown() const;
  /// Pixels that the figures take.
  int LeastWidth() const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void UpdateToolTip();
};

}  // namespace pallomir
