#pragma once

#include <QFrame>
#include <string_view>
#include <vector>

class QKeyEvent;
class QLabel;

namespace pallomir {

/// `pctKeyboard`: a picture of the keyboard over the map. The key under the pointer tells below, in
/// `lblTable`, what it does, and the picture is as high as that needs. By keyboard, Tab reaches it as one
/// control, in which the arrows go from key to key.
class KeyboardPicture : public QFrame {
 public:
  /// Hidden at first.
  explicit KeyboardPicture(QWidget* owner);

  /// Shows the picture over everything else in its owner: in the corner that begins at `corner`, or as far
  /// above as it must for its whole height.
  void ShowOverlay(const QPoint& corner = {});
  void HideOverlay() { hide(); }
  /// Gives the keyboard to the key that had it last.
  void FocusKey();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void AddKeys();
  QLabel* MakeKey(std::string_view caption, std::size_t index);
  void Describe(QLabel* key);
  void MakeCurrent(QLabel* key);
  bool Walk(const QKeyEvent& event);
  QLabel* Neighbour(int right, int down) const;

  std::vector<QLabel*> lblKey_;  // in the order of KeyCaptions
  std::vector<std::vector<QLabel*>> rows_;
  QLabel* current_ = nullptr;  // the one that Tab reaches
  QLabel* lblTable_;
  QPoint corner_;
  QLabel* described_ = nullptr;  // the key that lblTable tells of
};

}  // namespace pallomir
