#include "station/station.h"

#include <asio/ip/tcp.hpp>
#include <asio/ip/udp.hpp>
#include <asio/post.hpp>

#include "station/visits_service.h"

namespace pallomir::station {
namespace {

using asio::ip::tcp;
using asio::ip::udp;

Millis UtcNow() {
  using namespace std::chrono;
  return duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
}

std::string CantOpen(std::string_view what, const std::string& address, int port, const std::string& why) {
  return "can't open port " + std::to_string(port) + " on " + address + " for the " + std::string(what) +
         ": " + why + " (another station may be running)";
}

}  // namespace

Station::Station(asio::io_context& context, const Options& options, Log log)
    : context_(context),
      options_(options),
      log_(std::move(log)),
      demo_(UtcNow),
      store_(OpenStore(options.data, log_)),
      demoAndStored_(demo_, *store_),
      source_(options.isDemoOn ? static_cast<PositionSource&>(demoAndStored_) : *store_),
      timer_(context),
      webSite_(options.webRoot, options.onlineMap) {
  if (options.visits != VisitsFor::kNobody)
    webSite_.Serve("/visits", VisitsService(options.data), options.visits == VisitsFor::kEveryone);
}

std::string Station::Open() {
  std::error_code error;
  const auto address = asio::ip::make_address_v4(options_.address, error);
  udp::socket locatorSocket(context_);
  locatorSocket.open(udp::v4(), error);
  if (!error) locatorSocket.bind({address, options_.locatorPort}, error);
  if (error) return CantOpen("locator", options_.address, options_.locatorPort, error.message());

  tcp::acceptor probe(context_), data(context_);
  const auto probePort = static_cast<std::uint16_t>(options_.portBase - 2);
  const auto dataPort = static_cast<std::uint16_t>(options_.portBase - 1);
  if (const auto why = Listen(probe, {address, probePort}))
    return CantOpen("Base Server's probe", options_.address, probePort, why.message());
  if (const auto why = Listen(data, {address, dataPort}))
    return CantOpen("Base Server's data", options_.address, dataPort, why.message());
  if (webSite_.Start(options_.address, options_.webPort) == 0)
    return CantOpen("web site", options_.address, options_.webPort, "it is not free");

  std::optional<asio::ip::address_v4> advertised;
  if (!options_.advertisedAddress.empty())
    advertised = asio::ip::make_address_v4(options_.advertisedAddress, error);
  locator_ = std::make_unique<Locator>(
      std::move(locatorSocket), advertised, [this](std::string_view id) { return source_.Knows(id); }, log_);
  baseServer_ = std::make_unique<BaseServer>(std::move(probe), std::move(data), source_, UtcNow, log_);
  TickEverySecond();
  if (options_.isDemoOn) KeepDemo();
  return "";
}

void Station::KeepDemo() {
  const auto ignored = [](const std::string&) {};
  const Log logHere = [this](const std::string& line) {
    asio::post(context_, [log = log_, line] { log(line); });
  };
  demoKeeper_ = std::make_unique<DemoKeeper>(OpenStore(options_.data, ignored), UtcNow, logHere);
}

std::string Station::ReadyLine() const {
  const std::string& address = options_.address;
  return "pallomir-station ready: locator " + address + ":" + std::to_string(options_.locatorPort) +
         ", Base Server " + address + ":" + std::to_string(options_.portBase) + ", web site http://" +
         address + ":" + std::to_string(options_.webPort) + "/, data " + options_.data.string() +
         (options_.isDemoOn ? ", demo on" : ", demo off");
}

void Station::TickEverySecond() {
  timer_.expires_after(std::chrono::seconds(1));
  timer_.async_wait([this](std::error_code error) {
    if (error) return;
    baseServer_->Tick();
    TickEverySecond();
  });
}

}  // namespace pallomir::station
