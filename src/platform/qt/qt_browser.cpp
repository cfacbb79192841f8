#include "platform/qt/qt_browser.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QWebEngineDownloadRequest>
#include <QWebEngineScript>
#include <string>
#include <utility>

namespace pallomir {
namespace {

QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// The two texts go as JSON, which is a subset of the page's language, so that no value can end the text it is
// in.
QString WriteScript(std::string_view field, std::string_view value) {
  const QByteArray arguments =
      QJsonDocument(QJsonArray{Text(field), Text(value)}).toJson(QJsonDocument::Compact);
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

std::string ReasonOf(const QWebEngineLoadingInfo& info) {
  const std::string address = info.url().toString(QUrl::RemoveQuery).toStdString();
  if (info.errorDomain() == QWebEngineLoadingInfo::HttpStatusCodeDomain)
    return address + ": HTTP status " + std::to_string(info.errorCode());
  return address + ": " + info.errorString().toStdString();
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
  QObject::connect(
      page_.get(), &QWebEnginePage::renderProcessTerminated, &context_,
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
  const bool isPlaceholderComing = isLoading_ && IsOnDisk(asked_);
  if (isLoading_ && !isPlaceholderComing) waiting_.clear();
  waiting_.push_back(AddressOf(address));
  ++navigations_;
  // Loading asks beforeNavigate, which must not happen inside this call.
  if (!isPlaceholderComing) PostLoadNext();
}

void QtBrowser::PostLoadNext() {
  QMetaObject::invokeMethod(
      &context_, [this] { LoadNext(); }, Qt::QueuedConnection);
}

void QtBrowser::LoadNext() {
  if (waiting_.empty() || (isLoading_ && IsOnDisk(asked_))) return;
  asked_ = waiting_.front();
  waiting_.pop_front();
  isLoading_ = asked_.isValid();
  if (isLoading_) {
    isProcessDead_ = false;
    page_->load(asked_);
  } else {
    LosePage("no address: " + asked_.toString().toStdString());
    PostLoadNext();
  }
}

// The engine reports one start and one end for a load and for those that replace it before its end. A page's
// own navigations are reported too; once the page is there they concern nobody.
void QtBrowser::OnLoading(const QWebEngineLoadingInfo& info) {
  if (!isLoading_ || info.status() == QWebEngineLoadingInfo::LoadStartedStatus) return;
  isLoading_ = false;
  // A load that was cancelled ends with another status.
  if (info.status() == QWebEngineLoadingInfo::LoadFailedStatus) LosePage(ReasonOf(info));
  PostLoadNext();
}

void QtBrowser::OnProcessEnded(int exitCode) {
  isLoading_ = false;
  isProcessDead_ = true;
  LosePage("the process of the page ended with code " + std::to_string(exitCode));
  PostLoadNext();
}

// Nobody misses a page after which another one was asked for.
void QtBrowser::LosePage(std::string reason) {
  if (!waiting_.empty()) return;
  QMetaObject::invokeMethod(
      &context_,
      [this, reason = std::move(reason), count = navigations_] {
        const auto call = pageLost;
        if (call && count == navigations_) call(reason);
      },
      Qt::QueuedConnection);
}

void QtBrowser::WriteField(std::string_view field, std::string_view value) {
  const std::string lost = "no field " + std::string(field) + " on the page";
  // The engine would keep the write and give it to whatever page comes next.
  if (isProcessDead_) return trace_.Line(lost);
  const QPointer<QuietView> view = view_;
  page_->runJavaScript(WriteScript(field, value), QWebEngineScript::MainWorld,
                       [&trace = trace_, view, lost](const QVariant& found) {
                         if (view && !found.toBool()) trace.Line(lost);
                       });
}

void QtBrowser::Stop() {
  waiting_.clear();
  ++navigations_;
  isLoading_ = false;
  page_->triggerAction(QWebEnginePage::Stop);
}

}  // namespace pallomir
