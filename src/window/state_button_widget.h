#pragma once

#include <QWidget>
#include <functional>

class QLabel;

namespace pallomir {

class IconButton;

/// An icon with a word beside it that tells in the caption line of a state of the program, and opens what
/// there is to do about it.
class StateButton : public QWidget {
 public:
  /// `name` stands behind "pct" and "lbl" in the names of icon and word. `text` says what the icon shows to
  /// who points at it or can't see it.
  StateButton(QWidget* parent, const QString& name, const QString& icon, const QString& text);

  std::function<void()> chosen;

  /// The icon tells of a menu that it opens.
  void OpensMenu();
  /// Without a `word` nothing stands beside the icon.
  void ShowState(const QString& icon, const QString& text, const QString& word);

 private:
  IconButton* icon_;
  QLabel* word_;
};

}  // namespace pallomir
