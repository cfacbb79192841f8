#include "platform/qt/quiet_web.h"

#include <QChildEvent>
#include <QUrl>
#include <QWebEngineProfile>
#include <QWebEngineSettings>
#include <QWheelEvent>
#include <string>

namespace pallomir {
namespace {

// A page in a fault loop would otherwise fill the trace.
constexpr qsizetype kLongestLine = 500;

void ApplySettings(QWebEngineSettings& settings) {
  using Settings = QWebEngineSettings;
  for (const auto off :
       {Settings::AutoLoadIconsForPage, Settings::ErrorPageEnabled, Settings::FocusOnNavigationEnabled,
        Settings::FullScreenSupportEnabled, Settings::HyperlinkAuditingEnabled,
        Settings::JavascriptCanAccessClipboard, Settings::JavascriptCanOpenWindows,
        Settings::LocalContentCanAccessFileUrls, Settings::NavigateOnDropEnabled, Settings::PdfViewerEnabled,
        Settings::PluginsEnabled, Settings::ScreenCaptureEnabled}) {
    settings.setAttribute(off, false);
  }
}

}  // namespace

void OpenPagesToReaders() { qputenv("QTWEBENGINE_ENABLE_LINUX_ACCESSIBILITY", "1"); }

QuietPage::QuietPage(QWebEngineProfile* profile, Trace& trace) : QWebEnginePage(profile), trace_(trace) {
  ApplySettings(*settings());
  connect(this, &QWebEnginePage::featurePermissionRequested, this,
          [this](const QUrl& origin, Feature feature) {
            setFeaturePermission(origin, feature, PermissionDeniedByUser);
          });
}

bool QuietPage::acceptNavigationRequest(const QUrl& url, NavigationType, bool) {
  return !stops || !stops(url);
}

QWebEnginePage* QuietPage::createWindow(WebWindowType) { return nullptr; }

QStringList QuietPage::chooseFiles(FileSelectionMode, const QStringList&, const QStringList&) { return {}; }

void QuietPage::javaScriptAlert(const QUrl&, const QString& message) {
  trace_.Line("page alert: " + message.left(kLongestLine).toStdString());
}

bool QuietPage::javaScriptConfirm(const QUrl&, const QString& message) {
  trace_.Line("page question, answered no: " + message.left(kLongestLine).toStdString());
  return false;
}

bool QuietPage::javaScriptPrompt(const QUrl&, const QString& message, const QString&, QString*) {
  trace_.Line("page input, cancelled: " + message.left(kLongestLine).toStdString());
  return false;
}

void QuietPage::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString& message, int line,
                                         const QString& source) {
  trace_.Line("page: " + message.left(kLongestLine).toStdString() + " (" +
              QUrl(source).fileName().left(kLongestLine).toStdString() + ':' + std::to_string(line) + ')');
}

QuietView::QuietView(QWidget* parent) : QWebEngineView(parent) {
  setContextMenuPolicy(Qt::NoContextMenu);
  setAcceptDrops(false);
  setFocusPolicy(Qt::TabFocus);
}

// The widget that shows the page is a child, made anew with every process of the page. It takes the keyboard
// by Tab alone: a click on the map leaves it where it is.
bool QuietView::event(QEvent* event) {
  if (event->type() == QEvent::ChildAdded || event->type() == QEvent::ChildPolished) {
    QObject* child = static_cast<QChildEvent*>(event)->child();
    if (child->isWidgetType()) {
      child->removeEventFilter(this);
      child->installEventFilter(this);
      static_cast<QWidget*>(child)->setFocusPolicy(Qt::TabFocus);
      // By itself it would be the last that Tab reaches in the window.
      setTabOrder(this, static_cast<QWidget*>(child));
    }
  }
  return QWebEngineView::event(event);
}

bool QuietView::eventFilter(QObject* watched, QEvent* event) {
  const bool isZoom = event->type() == QEvent::Wheel &&
                      static_cast<QWheelEvent*>(event)->modifiers().testFlag(Qt::ControlModifier);
  return isZoom || QWebEngineView::eventFilter(watched, event);
}

}  // namespace pallomir
