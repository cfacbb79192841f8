#pragma once

#include <QLabel>

namespace pallomir {

/// `txtCaption`: one line of text that is shortened with an ellipsis when there is no room; then the tool tip
/// has the whole. It leaves the mouse to what it lies on.
class CaptionText : public QLabel {
 public:
  explicit CaptionText(QWidget* parent);

  void Show(const QString& text);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QString Elided() const;
  void UpdateToolTip();
};

}  // namespace pallomir
