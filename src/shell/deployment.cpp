#include "shell/deployment.h"

#include <algorithm>

namespace pallomir {
namespace {

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r";
  const std::size_t begin = text.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

// A host name or address, with an optional port; brackets for IPv6. What else is there could turn the address
// into another one.
bool IsHost(std::string_view text) {
  return !text.empty() && text.size() <= 255 && std::all_of(text.begin(), text.end(), [](char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '.' ||
           c == '-' || c == ':' || c == '[' || c == ']';
  });
}

// As a page names its own origin: in lower case, and without the port that http has anyway.
std::string AsOrigin(std::string_view host) {
  std::string origin(host);
  for (char& c : origin) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  constexpr std::string_view kHttpPort = ":80";
  if (origin.ends_with(kHttpPort)) origin.resize(origin.size() - kHttpPort.size());
  return origin;
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
    std::string* target = key == "WebsiteServer" ? &deployment.websiteServer
                          : key == "WebSite"     ? &deployment.webSite
                                                 : nullptr;
    if (target && IsHost(value)) {
      *target = AsOrigin(value);
    } else {
      complaints.push_back((target ? "no host in " : "unknown line ") + std::string(line));
    }
  }
  return deployment;
}

}  // namespace pallomir
