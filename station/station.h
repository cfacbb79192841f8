#pragma once

#include <asio/io_context.hpp>
#include <asio/steady_timer.hpp>
#include <memory>
#include <string>

#include "station/common/log.h"
#include "station/demo/demo_keeper.h"
#include "station/demo/demo_source.h"
#include "station/options.h"
#include "station/store/open_store.h"
#include "station/web/web_site.h"
#include "station/wire/base_server.h"
#include "station/wire/locator.h"

namespace pallomir::station {

/// The running station: locator, Base Server and web site over the store and, if they are on, the demo units.
class Station {
 public:
  /// Everything but the web site runs on the thread that runs `context`, which must outlive the station.
  Station(asio::io_context& context, const Options& options, Log log);

  /// Opens every port. Returns what went wrong, with the port, or an empty text once everything listens. To
  /// be called once.
  std::string Open();

  /// "pallomir-station ready: ..." with all addresses.
  std::string ReadyLine() const;

 private:
  void TickEverySecond();
  void KeepDemo();

  asio::io_context& context_;
  Options options_;
  Log log_;
  DemoSource demo_;
  std::unique_ptr<UnitStore> store_;
  CombinedSource demoAndStored_;
  PositionSource& source_;
  asio::steady_timer timer_;
  std::unique_ptr<Locator> locator_;
  std::unique_ptr<BaseServer> baseServer_;
  WebSite webSite_;
  std::unique_ptr<DemoKeeper> demoKeeper_;
};

}  // namespace pallomir::station
