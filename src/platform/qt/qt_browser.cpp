#include "platform/qt/qt_browser.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QWebEngineDownloadRequest>
#include <QWebEngineScript>
#include <string>
#include <utility>

namespace pallomir {
namespace {

QString Text(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

// The two texts go as JSON, which is a subset of the page's language, so that no value can end the text it is in.
QString WriteScript(std::string_view field, std::string_view value) {
  const QByteArray arguments = QJsonDocument(QJsonArray{Text(field), Text(value)}).toJson(QJsonDocument::Compact);
  return QStringLiteral(
             "(function(field, value) {"
             "  const form = document.forms['Form1'];"
             "  const element = form && form.elements[field];"
             "  if (!element) return false;"
             "  element.value = value;"
             "  return true;"
             "}).apply(null, %1)")
      .arg(QString::fromUtf8(arguments));
}

bool IsOnDisk(const QUrl& address) { return address.isLocalFile() || address.scheme() == "about"; }

}  // namespace

QUrl AddressOf(const std::string& address) {
  const QString text = QString::fromStdString(address);
  if (address.starts_with('/')) return QUrl::fromLocalFile(text);
  if (address.starts_with("about:") || address.find("://") != std::string::npos) return QUrl(text);
  return QUrl("http://" + text);
}

QtBrowser::QtBrowser(TileFiles tiles, Trace& trace, QWidget* parent)
    : trace_(trace),
      tiles_(std::move(tiles)),
      page_(std::make_unique<QuietPage>(&profile_, trace)),
      view_(new QuietView(parent)) {
  profile_.setHttpCacheType(QWebEngineProfile::MemoryHttpCache);
  profile_.setPersistentCookiesPolicy(QWebEngineProfile::NoPersistentCookies);
  profile_.installUrlSchemeHandler("tile", &tiles_);
  QObject::connect(&profile_, &QWebEngineProfile::downloadRequested, &context_,
                   [](QWebEngineDownloadRequest* download) { download->cancel(); });
  page_->stops = [this](const QUrl& url) {
    return beforeNavigate && beforeNavigate(url.toEncoded().toStdString());
  };
  QObject::connect(page_.get(), &QWebEnginePage::loadingChanged, &context_,
                   [this](const QWebEngineLoadingInfo& info) { OnLoading(info); });
  QObject::connect(page_.get(), &QWebEnginePage::renderProcessTerminated, &context_,
                   [this](QWebEnginePage::RenderProcessTerminationStatus, int exitCode) { OnProcessEnded(exitCode); });
  view_->setPage(page_.get());
}

// In this order: the view shows the page, and the page lives in the profile.
QtBrowser::~QtBrowser() {
  page_->stops = {};
  delete view_;
  page_.reset();
}

void QtBrowser::Navigate(const std::string& address) {
  if (asked_.isEmpty() || !IsOnDisk(asked_)) waiting_.clear();
  waiting_.push_back(AddressOf(address));
  // Loading asks beforeNavigate, which must not be inside this call.
  if (asked_.isEmpty() || !IsOnDisk(asked_)) {
    QMetaObject::invokeMethod(
        &context_, [this] { LoadNext(); }, Qt::QueuedConnection);
  }
}

void QtBrowser::LoadNext() {
  if (waiting_.empty()) return;
  asked_ = waiting_.front();
  waiting_.pop_front();
  started_ = false;
  page_->load(asked_);
}

void QtBrowser::OnLoading(const QWebEngineLoadingInfo& info) {
  if (getenv("DBG")) fprintf(stderr, "loading status %d url %s code %d dom %d err '%s' errpage %d asked %s\n", int(info.status()), info.url().toEncoded().constData(), info.errorCode(), int(info.errorDomain()), info.errorString().toUtf8().constData(), int(info.isErrorPage()), asked_.toEncoded().constData());
  if (asked_.isEmpty()) return;
  const auto status = info.status();
  if (status == QWebEngineLoadingInfo::LoadStartedStatus) {
    started_ = true;
    return;
  }
  // Until the asked one has begun, what ends is the load that it replaced.
  if (!started_) return;
  if (status == QWebEngineLoadingInfo::LoadFailedStatus) LosePage("X");
  asked_.clear();
  LoadNext();
}

void QtBrowser::OnProcessEnded(int exitCode) {
  LosePage("the process of the page ended with " + std::to_string(exitCode));
}

void QtBrowser::LosePage(std::string reason) {
  QMetaObject::invokeMethod(
      &context_,
      [this, reason = std::move(reason)] {
        const auto call = pageLost;
        if (call) call(reason);
      },
      Qt::QueuedConnection);
}

void QtBrowser::WriteField(std::string_view field, std::string_view value) {
  page_->runJavaScript(WriteScript(field, value), QWebEngineScript::MainWorld,
                       [&trace = trace_, name = std::string(field)](const QVariant& found) {
                         if (!found.toBool()) trace.Line("no field " + name + " on the page");
                       });
}

void QtBrowser::Stop() {
  waiting_.clear();
  asked_.clear();
  page_->triggerAction(QWebEnginePage::Stop);
}

}  // namespace pallomir
