#pragma once

#include <QDate>
#include <QDialog>

namespace pallomir {

/// The About box: modeless, over its owner, closed by OK, Enter or Escape.
class AboutBox : public QDialog {
 public:
  /// `version` is major.minor.revision; `date` is the executable's.
  AboutBox(QWidget* owner, const QString& title, const QString& version, const QDate& date);

  /// Shows the box, or brings the one that is already open to the front.
  void ShowBox();
};

/// "Version: " and "Date: " as the About box and the start-up list show them.
QString VersionText(const QString& version, const QDate& date);

/// The day on which the running program's file was last modified.
QDate ExecutableDate();

}  // namespace pallomir
