#pragma once

#include <QObject>

class QDialog;
class QWidget;

namespace pallomir {

/// Makes a dialog that is not modal behave as one: while it shows, the windows that it stands over take no
/// input and hand the keyboard on to it. X11's part of Qt asks for the keyboard for every modal window that
/// is shown, whatever the user is doing elsewhere. Belongs to the dialog.
class OwnerBlock : public QObject {
 public:
  explicit OwnerBlock(QDialog& dialog);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool IsBelow(const QWidget& window) const;

  QDialog& dialog_;
};

/// Whether a window takes the keyboard when it is shown next. It has to be hidden.
void AskForKeyboard(QWidget& window, bool ask);

}  // namespace pallomir
