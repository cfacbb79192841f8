#pragma once

#include <QNetworkAccessManager>
#include <QPointer>

#include "platform/web_query.h"

class QNetworkReply;

namespace pallomir {

/// Without proxies, cookies, a cache or redirections.
class QtWebQuery : public WebQuery {
 public:
  ~QtWebQuery() override { QtWebQuery::Cancel(); }
  void Get(const std::string& address, std::function<void(const Answer&)> then) override;
  void Cancel() override;

 private:
  void Take();
  void Finish(std::string error);

  QNetworkAccessManager manager_;
  QPointer<QNetworkReply> reply_;
  Answer answer_;
  std::function<void(const Answer&)> then_;
};

}  // namespace pallomir
