#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pallomir::station {

/// What the web site needs to know of a request.
struct HttpRequest {
  std::string method;
  std::string path;  ///< decoded, without the query; begins with "/"
  std::string ifNoneMatch;
  bool keepsAlive = false;  ///< the connection stays open behind the answer
  bool hasBody = false;
};

/// Ends a request's head.
inline constexpr std::string_view kHttpHeadEnd = "\r\n\r\n";

/// The head of an HTTP/1.0 or 1.1 request: its lines without the empty one at the end. Nothing for what is
/// malformed.
std::optional<HttpRequest> ParseHttpRequest(std::string_view head);

}  // namespace pallomir::station
