#pragma once

#include <QPixmap>
#include <QToolButton>
#include <functional>

namespace pallomir {

/// A flat button with a picture from assets/icons, drawn in the palette's text colour and sharp at every
/// scale. A click takes no focus; by keyboard, Tab reaches it and Space or Enter presses it.
class IconButton : public QToolButton {
 public:
  /// `icon` is a file name without ".svg"; `text` is both the accessible name and the tool tip.
  IconButton(QWidget* parent, const QString& name, const QString& icon, const QString& text);

  std::function<void()> chosen;   ///< by click or by keyboard
  std::function<void()> entered;  ///< the pointer came over the button

  void SetPicture(const QString& icon, const QString& text);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  const QPixmap& Picture(const QColor& colour, int side);

  QString file_;
  QPixmap picture_;  // drawn for pictureColour_ and its own size
  QColor pictureColour_;
};

}  // namespace pallomir
