#pragma once

#include <QPointer>
#include <QUrl>
#include <QWebEngineLoadingInfo>
#include <QWebEngineProfile>
#include <QWidget>
#include <deque>
#include <memory>

#include "base/trace.h"
#include "platform/browser.h"
#include "platform/qt/quiet_web.h"
#include "platform/qt/tile_scheme.h"

namespace pallomir {

/// The address as the engine takes it: an absolute path becomes a file, a text without a scheme gets "http".
QUrl AddressOf(const std::string& address);

/// The browser as a widget of the web engine. Nothing that a page leaves behind outlives this object.
class QtBrowser : public Browser {
 public:
  QtBrowser(TileFiles tiles, Trace& trace, QWidget* parent = nullptr);
  ~QtBrowser() override;

  /// A page on the disk is loaded to its end before what was asked for after it, so that the
  /// placeholder is seen while the server is waited for. Any other page gives way to the next one at once.
  void Navigate(const std::string& address) override;
  void WriteField(std::string_view field, std::string_view value) override;
  void Stop() override;

  /// Ends with this object, or with `parent` when that ends before.
  QWidget* Widget() { return view_; }

 private:
  void PostLoadNext();
  void LoadNext();
  void OnLoading(const QWebEngineLoadingInfo& info);
  void OnProcessEnded(int exitCode);
  void LosePage(std::string reason);

  Trace& trace_;
  QWebEngineProfile profile_;  // off the record: it has no name
  TileSchemeHandler tiles_;
  std::unique_ptr<QuietPage> page_;
  QPointer<QuietView> view_;
  std::deque<QUrl> waiting_;
  QUrl asked_;              // what Navigate asked for last and the engine got
  bool isLoading_ = false;  // whether it is still being loaded
  int navigations_ = 0;     // how often Navigate or Stop made what came before them not matter
  bool isProcessDead_ = false;
  QObject context_;
};

}  // namespace pallomir
