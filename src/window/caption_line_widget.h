#pragma once

#include <QPoint>
#include <QWidget>
#include <functional>
#include <optional>

#include "window/lamp_widget.h"
#include "window/window_modes.h"

class QHBoxLayout;
class QLabel;
class QPushButton;

namespace pallomir {

class CaptionText;
class IconButton;

/// The window's own caption line: menu button, date pickers, title, lamp, help buttons and the five buttons
/// of the window. Where no control lies, and on the title, the window is dragged by it. It decides nothing:
/// what the user does goes to the callbacks, of which empty ones are skipped.
class CaptionLine : public QWidget {
 public:
  explicit CaptionLine(QWidget* parent);

  std::function<void()> menu;
  std::function<void()> minimise;
  std::function<void()> normal;
  std::function<void()> maximise;
  std::function<void()> fullScreen;
  std::function<void()> exit;
  std::function<void()> doubleClicked;  ///< on the line or the title
  std::function<void()> showKeyboard;   ///< `pctHelp_1`, by pointer, click or keyboard
  std::function<void()> readKeyboard;   ///< `pctHelp_1`, by keyboard
  std::function<void()> showKeyList;    ///< `pctHelp_2`
  /// The pointer moved over a control of the caption (title, menu button, the five buttons); x in the window.
  std::function<void(int)> pointerMoved;
  std::function<void()> pointerLeft;  ///< the pointer left the line

  /// Puts a control (date picker, Reload) behind those that are already between menu button and title.
  void AddControl(QWidget* control);
  /// Puts what tells of a state of the program between the lamp's word and the lamp, before those that are
  /// there already. It takes its place in the order of Tab.
  void AddState(QWidget* control);
  void SetCaption(const QString& text);
  void SetCaptionVisible(bool visible);
  void SetMenuText(const QString& text);
  /// `word` stands beside the lamp; it may be empty. Without room for it and the title's figures, only what
  /// follows its colon is shown.
  void SetLamp(LampState state, const QString& tip, const QString& word);
  void SetDemoMode(bool on);
  /// Marks the button of the mode as pressed, and says whether the window can be dragged.
  void SetMode(WindowMode mode);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void AddMenuButton();
  void AddTitle();
  void AddStates();
  QLabel* AddWord(const char* name, const QString& text);
  void FitLampWord();
  void AddHelp();
  void AddWindowButtons();
  IconButton* AddButton(const char* name, const char* icon, const char* text, std::function<void()>& action);
  void DragTo(const QPoint& global);

  struct Drag {
    QPoint start;         // of the pointer, on the screen
    QPoint window;        // its place at the start
    bool moving = false;  // past the drag distance, and the system leaves the moving to us
  };

  QHBoxLayout* row_;
  QHBoxLayout* controls_;
  QPushButton* lblMenu_;
  QLabel* lblCaption_;
  CaptionText* txtCaption_;
  QLabel* lblDemo_;
  QLabel* lblLamp_;
  QString lampWord_;  // the whole
  Lamp* picLamp_;
  QWidget* firstState_;  // the one added last, or the lamp
  IconButton* pctButton_Normal_;
  IconButton* pctButton_Maximize_;
  IconButton* pctButton_FullScreen_;
  WindowMode mode_ = WindowMode::kNormal;
  std::optional<Drag> drag_;
};

}  // namespace pallomir
