#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pallomir::station {

/// What the web site needs to know about a request.
struct HttpRequest {
  std::string method;
  std::string path;         ///< decoded, without the query; begins with "/"
  std::string query;        ///< as it stands, without its "?"; empty where there is none
  std::string host;         ///< the Host header as it stands; empty without one
  std::string ifNoneMatch;  ///< as it stands; empty without that header
  bool keepsAlive = false;  ///< the connection stays open after the answer
  bool hasBody = false;
};

/// The text with each "%" and two hexadecimal digits as the byte they stand for. Nothing where a "%" is
/// followed by anything else.
std::optional<std::string> PercentDecoded(std::string_view text);

/// The end of a request's head.
inline constexpr std::string_view kHttpHeadEnd = "\r\n\r\n";

/// Reads the head of an HTTP/1.0 or 1.1 request without the kHttpHeadEnd that ends it. Nothing for a
/// malformed one.
std::optional<HttpRequest> ParseHttpRequest(std::string_view head);

}  // namespace pallomir::station
