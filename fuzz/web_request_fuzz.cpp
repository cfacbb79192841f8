#include <algorithm>

#include "fuzz_input.h"
#include "station/web/http_request.h"

// The head of a request to the web site.
//
// Flags: -max_len=256

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace pallomir;
  const std::string_view head = AsText({data, size});
  const auto request = station::ParseHttpRequest(head);
  if (!request) return 0;
  PALLOMIR_DEMAND(!request->method.empty() && request->path.starts_with('/'));
  PALLOMIR_DEMAND(request->path.size() + request->query.size() + request->ifNoneMatch.size() +
                      request->host.size() <=
                  size);
  // Said again, it is the same request.
  std::string again = request->method + " ";
  for (const char c : request->path) {
    constexpr char kDigits[] = "0123456789abcdef";
    const auto code = static_cast<unsigned char>(c);
    again += c == '/' ? std::string("/") : std::string{'%', kDigits[code >> 4], kDigits[code & 15]};
  }
  again += "?x HTTP/1.1\r\nIf-None-Match: " + request->ifNoneMatch +
           (request->keepsAlive ? "\r\nX: y" : "\r\nConnection: close") +
           (request->hasBody ? "\r\nContent-Length: 1" : "\r\nContent-Length: 0");
  const auto second = station::ParseHttpRequest(again);
  PALLOMIR_DEMAND(second && second->method == request->method && second->path == request->path &&
                  second->ifNoneMatch == request->ifNoneMatch && second->keepsAlive == request->keepsAlive &&
                  second->hasBody == request->hasBody && second->query == "x");
  return 0;
}
