#pragma once

#include <QFrame>
#include <vector>

class QLabel;

namespace pallomir {

/// `pctKeyboard`: a picture of the keyboard over the map. The key under the pointer tells below, in
/// `lblTable`, what it does, and the picture is as high as that needs. It takes no keyboard.
class KeyboardPicture : public QFrame {
 public:
  /// Hidden at first.
  explicit KeyboardPicture(QWidget* owner);

  /// Shows the picture in the owner's upper left corner, over everything else there.
  void ShowOverlay();
  void HideOverlay() { hide(); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void AddKeys();
  void Describe(QLabel* key);

  std::vector<QLabel*> lblKey_;  // in the order of KeyCaptions
  QLabel* lblTable_;
  QLabel* described_ = nullptr;  // the key that lblTable tells of
};

}  // namespace pallomir
