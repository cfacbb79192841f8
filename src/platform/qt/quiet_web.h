#pragma once

#include <QWebEnginePage>
#include <QWebEngineView>
#include <functional>

#include "base/trace.h"

namespace pallomir {

/// Lets assistive programs read web pages as well, which the engine leaves out on Linux unless it is asked.
/// Costs nothing while there is no such program. Before the application object is made.
void OpenPagesToReaders();

/// A page that shows nothing but itself: what a web page may ask of a browser (dialogs, windows, downloads,
/// files, places) is refused, and what it says is traced.
class QuietPage : public QWebEnginePage {
 public:
  QuietPage(QWebEngineProfile* profile, Trace& trace);

  /// True stops the navigation.
  std::function<bool(const QUrl& url)> stops;

 protected:
  bool acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) override;
  QWebEnginePage* createWindow(WebWindowType type) override;
  QStringList chooseFiles(FileSelectionMode mode, const QStringList& oldFiles,
                          const QStringList& acceptedMimeTypes) override;
  void javaScriptAlert(const QUrl& origin, const QString& message) override;
  bool javaScriptConfirm(const QUrl& origin, const QString& message) override;
  bool javaScriptPrompt(const QUrl& origin, const QString& message, const QString& defaultValue,
                        QString* result) override;
  void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString& message, int line,
                                const QString& source) override;

 private:
  Trace& trace_;
};

/// A view without a context menu, drops or zoom by the wheel, that leaves the keyboard where it is.
class QuietView : public QWebEngineView {
 public:
  explicit QuietView(QWidget* parent);

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace pallomir
