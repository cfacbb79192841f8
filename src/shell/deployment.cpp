#include "shell/deployment.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace pallomir {
namespace {

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r";
  const std::size_t begin = text.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

bool HoldsOnly(std::string_view text, std::string_view further) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [further](char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || further.find(c) != further.npos;
  });
}

// A name or an IPv4 address. What else is there could turn the address into another one.
bool IsName(std::string_view text) { return text.size() <= 255 && HoldsOnly(text, ".-"); }

bool IsIpv6(std::string_view text) {
  return text.size() <= 45 && HoldsOnly(text, ":.") && text.find(':') != text.rfind(':');
}

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

// The locator's host, without a port: that one is fixed.
std::optional<std::string> AsHost(std::string_view text) {
  std::string host = LowerCase(text);
  if (!IsName(host) && !IsIpv6(host)) return std::nullopt;
  return host;
}

// host or host:port, an IPv6 address in brackets, as a page names its own origin: in lower case, and without
// the port that http has anyway.
std::optional<std::string> AsOrigin(std::string_view text) {
  const std::string origin = LowerCase(text);
  std::size_t end = origin.find(':');
  if (origin.starts_with('[')) {
    end = origin.find(']');
    if (end == origin.npos || !IsIpv6(std::string_view(origin).substr(1, end - 1))) return std::nullopt;
    ++end;
  } else if (!IsName(std::string_view(origin).substr(0, end))) {
    return std::nullopt;
  }
  if (end >= origin.size()) return origin;
  const std::string_view digits = std::string_view(origin).substr(end + 1);
  int port = 0;
  const auto [last, error] = std::from_chars(digits.data(), digits.data() + digits.size(), port);
  const bool isPort = origin[end] == ':' && error == std::errc{} && last == digits.data() + digits.size();
  if (!isPort || port < 1 || port > 65535) return std::nullopt;
  constexpr int kHttpPort = 80;
  return origin.substr(0, end) + (port == kHttpPort ? "" : ":" + std::to_string(port));
}

}  // namespace

Deployment ParseDeployment(std::string_view text, std::vector<std::string>& complaints) {
  Deployment deployment;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = Trimmed(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.empty() || line.front() == '#' || line.front() == ';') continue;
    const std::size_t equals = std::min(line.find('='), line.size());
    const std::string_view key = Trimmed(line.substr(0, equals));
    const std::string_view value =
        equals < line.size() ? Trimmed(line.substr(equals + 1)) : std::string_view{};
    const bool isServer = key == "WebsiteServer";
    const bool isSite = key == "WebSite";
    const auto host = isServer ? AsHost(value) : isSite ? AsOrigin(value) : std::nullopt;
    if (host) {
      (isServer ? deployment.websiteServer : deployment.webSite) = *host;
    } else {
      complaints.push_back((isServer || isSite ? "no host in " : "unknown line ") + std::string(line));
    }
  }
  return deployment;
}

}  // namespace pallomir
