#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pallomir::station {

/// What the web site needs to know about a request.
struct HttpRequest {
  std::string method;
  std::string path;         ///< decoded, without the query; begins with "/"
  std::string ifNoneMatch;  ///< as it stands; empty without that header
  bool keepsAlive = false;  ///< the connection stays open after the answer
  bool hasBody = false;
};

/// The end of a request's head.
inline constexpr std::string_view kHttpHeadEnd = "\r\n\r\n";

/// Reads the head of an HTTP/1.0 or 1.1 request without the kHttpHeadEnd that ends it. Nothing for a
/// malformed one.
std::optional<HttpRequest> ParseHttpRequest(std::string_view head);

}  // namespace pallomir::station
