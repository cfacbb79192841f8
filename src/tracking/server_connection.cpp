#include "tracking/server_connection.h"

#include <algorithm>
#include <utility>

#include "base/check_code.h"
#include "base/number_format.h"
#include "tracking/packets.h"

namespace pallomir {

using namespace connection_phase;

namespace {

constexpr std::size_t kServerEntrySize = 12;

// A datagram may be lost: an unanswered question is asked again after these seconds, and given up at last.
constexpr int kAskAgainAfter[] = {3, 8};
constexpr int kGiveUpAfter = 15;

std::string HexOf(ByteView bytes) {
  std::string text;
  for (const std::uint8_t byte : bytes) text += HexDigits(byte, 2);
  return text;
}

// The dotted address of 8 hexadecimal digits, behind which 4 of a port stand that clients do not use; "" when
// there are other characters.
std::string ParseEntry(std::string_view entry) {
  std::string address;
  for (std::size_t octet = 0; octet < 4; ++octet) {
    const auto value = ParseHex(entry.substr(2 * octet, 2));
    if (!value) return {};
    address += (octet ? "." : "") + std::to_string(*value);
  }
  return ParseHex(entry.substr(8, 4)) ? address : "";
}

}  // namespace

std::string TooManyUnitsText(std::size_t enabledCount) {
  return std::to_string(enabledCount) +
         " mobile units are enabled, but one request to the Pallomir Website " + "Server names at most " +
         std::to_string(kMostUnitsPerRequest) +
         ".\nNo data was asked for. Disable some units in the mobile unit list and reload the map.";
}

std::string DataRequestText(std::string_view unitIds, Millis startUtc, Millis endUtc) {
  return std::string(unitIds) + "~" + IsoText(startUtc) + "~" + IsoText(endUtc) + "~~";
}

LocatorReply ParseLocatorReply(ByteView datagram) {
  LocatorReply reply;
  if (datagram.size() < kShortCheckSize || (datagram.size() - kShortCheckSize) % kServerEntrySize != 0)
    return reply;
  const ByteView rest = datagram.subspan(kShortCheckSize);
  const Bytes expected = ShortCheckForm(rest);
  const bool matches = std::equal(expected.begin(), expected.end(), datagram.begin());
  if (!matches) reply.expectedCheck = expected;
  if (rest.empty()) {
    reply.kind = LocatorReply::Kind::kNoServer;
  } else if (!matches) {
    reply.kind = LocatorReply::Kind::kCheckMismatch;
  } else {
    reply.server = ParseEntry(AsText(rest));
    reply.kind = reply.server.empty() ? LocatorReply::Kind::kMalformed : LocatorReply::Kind::kServer;
  }
  return reply;
}

ServerConnection::ServerConnection(const ServerEndpoints& network, EventLoop& loop, Trace& trace, Host host)
    : locator_(network.locator),
      probe_(network.probe),
      data_(network.data),
      trace_(trace),
      host_(std::move(host)) {
  tmrLocator_ = loop.CreateTimer("tmrLocator", 1000, [this] { OnLocatorSecond(); });
  locator_.arrived = [this](ByteView datagram) { OnLocatorReply(datagram); };
  locator_.failed = [this](const EndpointError& error) { OnDatagramError(error); };
  probe_.connected = [this] { OnProbeConnected(); };
  probe_.failed = [this](const EndpointError& error) { OnProbeError(error); };
  probe_.closedByPeer = [this] { OnClosedByPeer("WS_Client_B"); };
  data_.connected = [this] { OnDataConnected(); };
  data_.arrived = [this](ByteView bytes) { host_.arrived(bytes); };
  data_.failed = [this](const EndpointError& error) { OnStreamError("WS_Client_C", error); };
  data_.closedByPeer = [this] { OnClosedByPeer("WS_Client_C"); };
}

void ServerConnection::Enter(Phase phase) {
  phase_ = std::move(phase);
  tmrLocator_->SetEnabled(false);
  tmrLocator_->SetEnabled(IsIn<Locating>());
}

void ServerConnection::Restart() {
  if (const auto* report = std::get_if<Reporting>(&phase_); report && report->isOfLocator) unretried_ = true;
  AskLocator();
}

void ServerConnection::Renew() {
  unretried_ = false;
  AskLocator();
}

void ServerConnection::HangUp() {
  if (IsIn<Closed>()) return;
  CloseAll();
  Enter(ClosedByServer{});
}

void ServerConnection::AskLocator() {
  if (IsIn<Closed>()) return;
  CloseAll();
  if (const std::size_t units = host_.locatorRequest().size() / kUnitIdSize; units > kMostUnitsPerRequest) {
    Enter(Idle{});
    return host_.message(TooManyUnitsText(units));
  }
  Enter(Locating{});
  locator_.Connect(host_.locatorHost, kLocatorPort);
  SendQuestion();
}

void ServerConnection::SendQuestion() {
  const std::string request = host_.locatorRequest();
  Bytes datagram = ShortCheckForm(AsBytes(request));
  Append(datagram, AsBytes(request));
  locator_.Send(datagram);
}

// An answer to each question may come: those that are not waited for any more are left out.
void ServerConnection::OnLocatorSecond() {
  auto& question = std::get<Locating>(phase_);
  ++question.silentSeconds;
  if (std::ranges::count(kAskAgainAfter, question.silentSeconds) > 0) {
    trace_.Line("no answer of the locator: asked again");
    SendQuestion();
  }
  if (question.silentSeconds < kGiveUpAfter) return;
  OnDatagramError(
      {kErrorTimedOut,
       question.unusable.empty()
           ? "The Pallomir Website Server does not answer."
           : "The Pallomir Website Server answered, but its answer can't be used: " + question.unusable,
       kErrorTimedOut});
}

void ServerConnection::Retry() { AskLocator(); }

void ServerConnection::StopRetrying() {
  const auto* report = std::get_if<Reporting>(&phase_);
  if (!report) return;
  if (report->isOfLocator) unretried_ = true;
  Enter(Idle{});
}

void ServerConnection::Close() {
  CloseAll();
  Enter(Closed{});
}

void ServerConnection::CloseAll() {
  for (Endpoint* endpoint :
       {static_cast<Endpoint*>(&locator_), static_cast<Endpoint*>(&probe_), static_cast<Endpoint*>(&data_)}) {
    if (!endpoint->IsClosed()) endpoint->Close();
  }
}

void ServerConnection::OnLocatorReply(ByteView datagram) {
  // A datagram may come twice, or when its question was given up already.
  if (!IsIn<Locating>()) return trace_.Line("locator reply left out: none was waited for");
  const LocatorReply reply = ParseLocatorReply(datagram);
  using Kind = LocatorReply::Kind;
  switch (reply.kind) {
    case Kind::kNoServer:
      if (!unretried_ || reply.expectedCheck.empty()) return OnNoServer();
      break;
    case Kind::kWrongLength:
      return OnWrongLength(datagram.size());
    case Kind::kCheckMismatch:
      break;
    case Kind::kMalformed:
      return OnUnusable("there is no address in it.");
    case Kind::kServer:
      return OnServer(reply.server);
  }
  OnUnusable("its check code is wrong.");
  host_.caption("Error: HashCode mismatch; should be " + HexOf(reply.expectedCheck) + ", not " +
                HexOf(datagram.first(kShortCheckSize)));
}

void ServerConnection::OnNoServer() {
  if (WantsNothing() || !unretried_) {
    Report("634298",
           "Pallomir server had no match for your base request.\n"
           "Verify that Pallomir Server is running.\n"
           "This can also occur for a few minutes after Pallomir Server first starts up.\n"
           "\n" +
               FaqLine(),
           Reporting{.isOfLocator = true});
    return;
  }
  Enter(Idle{});
  host_.message(
      "Error 501332: The request to the Pallomir Website Server returned no data. This can mean:\n"
      "- Your Pallomir Data Server program is not running, so the Pallomir Website Server is not aware "
      "of this mobile unit ID;\n"
      "- You have entered an erronoeous mobile unit ID into either this Pallomir Browser or your "
      "Pallomir Data Server, so they do not match.\n"
      "Please correct the problem and restart the programs.");
}

// One problem of the locator is reported once; a later one waits for a usable answer until the time is over.
void ServerConnection::OnWrongLength(std::size_t size) {
  if (unretried_) return OnUnusable("it has " + std::to_string(size) + " characters; there should be 18.");
  Report("166308",
         "Wrong string length; should be 18, not " + std::to_string(size) +
             "\n"
             "The Pallomir website is not properly setting up your connection to your Pallomir "
             "Base Server...\n"
             "wait a few moments and retry.\n"
             "\n" +
             FaqLine(),
         Reporting{.isOfLocator = true});
}

void ServerConnection::OnUnusable(const std::string& reason) {
  std::get<Locating>(phase_).unusable = reason;
  trace_.Line("locator reply left out: " + reason);
}

void ServerConnection::OnServer(const std::string& address) {
  const int probePort = host_.portBase() - 2;
  host_.caption("IP Address of Home Server = " + address + ", Port Number = " + std::to_string(probePort));
  Enter(Probing{address});
  if (!probe_.IsClosed()) probe_.Close();
  probe_.Connect(address, probePort);
}

void ServerConnection::OnProbeConnected() {
  const auto* probing = std::get_if<Probing>(&phase_);
  if (!probing) return;
  const std::string server = probing->server;
  Enter(Connecting{});
  if (!data_.IsClosed()) data_.Close();
  data_.Connect(server, host_.portBase() - 1);
  probe_.Close();
}

void ServerConnection::OnDataConnected() {
  if (!IsIn<Connecting>()) return;
  Enter(Streaming{});
  const std::string request = host_.dataRequest();
  if (!request.empty()) data_.Send(AsBytes(request));
}

void ServerConnection::OnDatagramError(const EndpointError& error) {
  Report("843898/" + std::to_string(error.number), "\n\n" + error.description);
}

void ServerConnection::OnProbeError(const EndpointError& error) {
  if (error.number == kErrorTimedOut) {
    Report("855711/10060",
           "\n\n"
           "Unable to connect to pallomir_server...\n"
           "  - are you connected to the internet?\n"
           "  - is pallomir_server running and connected to the internet?\n"
           "  - is pallomir_server hidden behind a local LAN's firewall?");
  } else if (error.number == kErrorRefused) {
    Report("855712/10061",
           "\n"
           "The Pallomir Base Server is rejecting your messages.\n"
           "This can have several causes:\n"
           " - The Pallomir Base Server is not running;\n"
           " - The local LAN for the computer hosting the Pallomir Base Server is\n"
           "     not correctly configured to pass messages from the\n"
           "     Display Client (this computer) through its firewall to the Base Server.\n"
           "\n" +
               FaqLine());
  } else {
    OnStreamError("WS_Client_B", error);
  }
}

void ServerConnection::OnStreamError(const char* endpoint, const EndpointError& error) {
  Report("855713/" + std::to_string(error.number), "\n\n" + std::string(endpoint) + "\n" + error.description +
                                                       "\nScode = " + std::to_string(error.statusCode));
}

void ServerConnection::OnClosedByPeer(const char* endpoint) {
  trace_.Line(std::string(endpoint) + " closed by the server");
  if (!IsIn<Streaming>()) return;
  Enter(ClosedByServer{});
  host_.closedByServer();
}

void ServerConnection::Report(const std::string& code, const std::string& message, Reporting report) {
  if (IsIn<Closed>()) return;
  if (WantsNothing()) {
    trace_.Line("error " + code + " left out: no unit is enabled");
    CloseAll();
    return Enter(Idle{});
  }
  // A retry is the answer to all that has been reported until then.
  if (const auto* open = std::get_if<Reporting>(&phase_); open && open->isOfLocator) report = *open;
  Enter(report);
  host_.report(code, message);
}

std::string ServerConnection::FaqLine() const { return "See the answers at " + host_.faqAddress; }

}  // namespace pallomir
