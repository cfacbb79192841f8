#include "station/web/http_request.h"

#include <algorithm>

#include "base/number_format.h"
#include "station/common/text.h"

namespace pallomir::station {
namespace {

// Removes the text up to and including the next `end`, or all of it if there is none, and returns it without
// `end`.
std::string_view TakeUntil(std::string_view& text, std::string_view end) {
  const std::size_t at = text.find(end);
  const std::string_view taken = text.substr(0, at);
  text.remove_prefix(at == text.npos ? text.size() : at + end.size());
  return taken;
}

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  for (char& c : lower)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return lower;
}

bool ParseRequestLine(std::string_view line, HttpRequest& request) {
  request.method = TakeUntil(line, " ");
  const std::string_view target = TakeUntil(line, " ");
  const bool isMethod = !request.method.empty() &&
                        std::ranges::all_of(request.method, [](char c) { return c >= 'A' && c <= 'Z'; });
  if (!isMethod || !target.starts_with('/') || (line != "HTTP/1.1" && line != "HTTP/1.0")) return false;
  request.keepsAlive = line == "HTTP/1.1";
  const std::string_view asked = target.substr(0, target.find('#'));
  const auto path = PercentDecoded(asked.substr(0, asked.find('?')));
  if (path) request.path = *path;
  if (const std::size_t mark = asked.find('?'); mark != asked.npos) request.query = asked.substr(mark + 1);
  return path.has_value();
}

bool ParseHeader(std::string_view line, HttpRequest& request) {
  const std::size_t colon = line.find(':');
  if (colon == line.npos || colon == 0 || line.find_first_of(" \t") < colon) return false;
  const std::string name = LowerCase(line.substr(0, colon));
  const std::string_view value = Trimmed(line.substr(colon + 1), " \t");
  if (name == "if-none-match") request.ifNoneMatch = value;
  if (name == "host") request.host = value;
  if (name == "connection") {
    const std::string wish = LowerCase(value);
    if (wish.find("close") != wish.npos) request.keepsAlive = false;
    if (wish.find("keep-alive") != wish.npos) request.keepsAlive = true;
  }
  if (name == "transfer-encoding" || (name == "content-length" && value != "0")) request.hasBody = true;
  return true;
}

}  // namespace

std::optional<std::string> PercentDecoded(std::string_view text) {
  std::string decoded;
  while (!text.empty()) {
    if (text.front() != '%') {
      decoded += text.front();
      text.remove_prefix(1);
      continue;
    }
    const auto code = text.size() < 3 ? std::nullopt : ParseHex(text.substr(1, 2));
    if (!code) return std::nullopt;
    decoded += static_cast<char>(*code);
    text.remove_prefix(3);
  }
  return decoded;
}

std::optional<HttpRequest> ParseHttpRequest(std::string_view head) {
  HttpRequest request;
  if (!ParseRequestLine(TakeUntil(head, "\r\n"), request)) return std::nullopt;
  while (!head.empty())
    if (!ParseHeader(TakeUntil(head, "\r\n"), request)) return std::nullopt;
  return request;
}

}  // namespace pallomir::station
