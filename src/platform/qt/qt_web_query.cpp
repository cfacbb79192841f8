#include "platform/qt/qt_web_query.h"

#include <QNetworkProxy>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUrl>
#include <utility>

namespace pallomir {

void QtWebQuery::Get(const std::string& address, std::function<void(const Answer&)> then) {
  Cancel();
  answer_ = {};
  then_ = std::move(then);
  manager_.setProxy(QNetworkProxy::NoProxy);
  QNetworkRequest request(QUrl::fromEncoded(QByteArray::fromStdString(address), QUrl::StrictMode));
  request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
  request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
  request.setTransferTimeout(kTimeOutSeconds * 1000);
  reply_ = manager_.get(request);
  reply_->setReadBufferSize(kMostBytes + 1);
  QObject::connect(reply_, &QNetworkReply::readyRead, reply_, [this] { Take(); });
  QObject::connect(reply_, &QNetworkReply::finished, reply_, [this] {
    const bool isAnswer = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid() &&
                          reply_->error() != QNetworkReply::OperationCanceledError &&
                          reply_->error() != QNetworkReply::RemoteHostClosedError;
    Take();
    if (reply_) Finish(isAnswer ? std::string() : reply_->errorString().toStdString());
  });
}

void QtWebQuery::Take() {
  const QByteArray bytes = reply_->readAll();
  if (answer_.body.size() + static_cast<std::size_t>(bytes.size()) > kMostBytes)
    return Finish("The answer is longer than it can be");
  answer_.body.append(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

void QtWebQuery::Finish(std::string error) {
  answer_.status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
  answer_.error = std::move(error);
  const auto then = std::exchange(then_, {});
  const Answer answer = std::exchange(answer_, {});
  Cancel();
  then(answer);
}

void QtWebQuery::Cancel() {
  then_ = {};
  if (!reply_) return;
  QNetworkReply* reply = std::exchange(reply_, nullptr);
  reply->disconnect();
  reply->abort();
  reply->deleteLater();
}

}  // namespace pallomir
