#include "servicehost/listening.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstring>

#include "servicehost/descriptor.h"
#include "station/wire/locator_messages.h"

namespace pallomir::servicehost {
namespace {

using Clock = std::chrono::steady_clock;

// How long one question waits for its answer before it is asked again.
constexpr int kAnswerMilliseconds = 500;
constexpr int kPauseMilliseconds = 50;

sockaddr_in Endpoint(const std::string& address, int port) {
  sockaddr_in endpoint{};
  endpoint.sin_family = AF_INET;
  endpoint.sin_port = htons(static_cast<std::uint16_t>(port));
  ::inet_pton(AF_INET, address.c_str(), &endpoint.sin_addr);
  return endpoint;
}

// A station that listens on all addresses is asked at this computer's own.
std::string AskedAddress(const station::Options& options) {
  return options.address == "0.0.0.0" ? "127.0.0.1" : options.address;
}

Descriptor Connect(int type, const sockaddr_in& endpoint) {
  Descriptor connection(::socket(AF_INET, type | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (::connect(connection.Get(), reinterpret_cast<const sockaddr*>(&endpoint), sizeof endpoint) != 0 &&
      errno != EINPROGRESS)
    connection.Close();
  return connection;
}

bool Await(const Descriptor& connection, short event) {
  pollfd ready{connection.Get(), event, 0};
  return ::poll(&ready, 1, kAnswerMilliseconds) == 1;
}

// Whether anything comes back for `question`.
bool IsAnswered(int type, const sockaddr_in& endpoint, ByteView question) {
  const Descriptor connection = Connect(type, endpoint);
  if (!connection || !Await(connection, POLLOUT)) return false;
  if (::send(connection.Get(), question.data(), question.size(), MSG_NOSIGNAL) < 0) return false;
  char first = 0;
  return Await(connection, POLLIN) && ::recv(connection.Get(), &first, 1, 0) == 1;
}

bool IsLocatorAnswering(const station::Options& options) {
  return IsAnswered(SOCK_DGRAM, Endpoint(AskedAddress(options), options.locatorPort),
                    station::LocatorRequest({}));
}

bool IsWebSiteAnswering(const station::Options& options) {
  return IsAnswered(SOCK_STREAM, Endpoint(AskedAddress(options), options.webPort),
                    AsBytes("GET / HTTP/1.0\r\n\r\n"));
}

struct Port {
  int type, number;
  const char* use;
};

std::array<Port, 4> PortsOf(const station::Options& options) {
  return {{{SOCK_DGRAM, options.locatorPort, "locator"},
           {SOCK_STREAM, options.portBase - 2, "Base Server's probe"},
           {SOCK_STREAM, options.portBase - 1, "Base Server's data"},
           {SOCK_STREAM, options.webPort, "web site"}}};
}

// Why the port can't be opened as the station opens it, an error number; 0 when it can.
int WhyTaken(int type, const sockaddr_in& endpoint) {
  const Descriptor trial(::socket(AF_INET, type | SOCK_CLOEXEC, 0));
  const int on = 1;
  if (type == SOCK_STREAM) ::setsockopt(trial.Get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  bool isFree = ::bind(trial.Get(), reinterpret_cast<const sockaddr*>(&endpoint), sizeof endpoint) == 0;
  if (isFree && type == SOCK_STREAM) isFree = ::listen(trial.Get(), 1) == 0;
  return isFree ? 0 : errno;
}

}  // namespace

std::string PortsText(const station::Options& options) {
  return "locator " + options.address + ":" + std::to_string(options.locatorPort) + " (UDP), Base Server " +
         options.address + ":" + std::to_string(options.portBase - 2) + " and " +
         std::to_string(options.portBase - 1);
}

std::string MapPageText(const station::Options& options) {
  return "http://" + AskedAddress(options) + ":" + std::to_string(options.webPort) + "/fullscreen/index.php";
}

std::string FindTakenPort(const station::Options& options) {
  for (const auto& [type, number, use] : PortsOf(options)) {
    const int why = WhyTaken(type, Endpoint(options.address, number));
    if (why != 0)
      return "can't open port " + std::to_string(number) + " on " + options.address + " for the " + use +
             ": " + std::strerror(why) + " (another station may be running)";
  }
  return "";
}

std::string FindUsedPort(const station::Options& options) {
  for (const auto& [type, number, use] : PortsOf(options))
    if (WhyTaken(type, Endpoint(options.address, number)) == EADDRINUSE)
      return "port " + std::to_string(number) + " on " + options.address + " (" + use + ")";
  return "";
}

bool AwaitAnswers(const station::Options& options, std::chrono::milliseconds limit) {
  const auto until = Clock::now() + limit;
  while (!IsLocatorAnswering(options) || !IsWebSiteAnswering(options)) {
    if (Clock::now() >= until) return false;
    ::poll(nullptr, 0, kPauseMilliseconds);  // another program's doing: there is no event to wait for
  }
  return true;
}

}  // namespace pallomir::servicehost
