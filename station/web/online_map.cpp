#include "station/web/online_map.h"

#include <algorithm>
#include <cctype>

#include "station/common/text.h"

namespace pallomir::station {
namespace {

// Stands for the servers a, b and c in an online map's address.
constexpr std::string_view kServerPlace = "{s}";

// What an address may have in braces: the tile, the server, and the density of the screen.
constexpr std::string_view kPlaceholders[] = {"{z}", "{x}", "{y}", "{-y}", kServerPlace, "{r}"};

// Others would have to be escaped in a header line or in JSON, of which the address becomes a part.
bool IsAddressCharacter(char c) {
  constexpr std::string_view kMarks = "-._~:/?#@&+=%{}";
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || kMarks.find(c) != kMarks.npos;
}

bool HasOtherBraces(std::string_view url) {
  while (!url.empty()) {
    const std::size_t brace = std::min(url.find_first_of("{}"), url.size());
    url.remove_prefix(brace);
    if (url.empty()) break;
    const auto known = std::ranges::find_if(kPlaceholders, [&](auto each) { return url.starts_with(each); });
    if (known == std::end(kPlaceholders)) return true;
    url.remove_prefix(known->size());
  }
  return false;
}

// Pages may load from this host. "{s}" may stand in it once, with more names behind it: otherwise the map's
// maker would not be the owner of all the hosts that are allowed.
bool IsPictureHost(std::string_view text) {
  std::string host(text);
  if (const std::size_t server = host.find(kServerPlace); server != host.npos) {
    if (host.find('.', server) == host.npos) return false;
    host.replace(server, kServerPlace.size(), "a");
  }
  const bool hasEmptyName = host.empty() || host.front() == '.' || host.find("..") != host.npos;
  return !hasEmptyName && host.find_first_of("{}*") == host.npos;
}

}  // namespace

std::optional<OnlineMap> ParseOnlineMap(std::string_view text) {
  const std::size_t space = text.find(' ');
  if (space == text.npos) return std::nullopt;
  const std::string_view url = text.substr(0, space);
  const std::string_view attribution = Trimmed(text.substr(space), " \t\r");
  const bool isWeb = url.starts_with("https://") || url.starts_with("http://");
  const std::size_t start = isWeb ? url.find("://") + 3 : url.size();
  const bool hasHost = IsPictureHost(url.substr(start, url.find_first_of("/?#", start) - start));
  const auto names = [&url](std::string_view part) { return url.find(part) != url.npos; };
  if (!hasHost || !names("{z}") || !names("{x}") || !names("{y}") || attribution.empty()) return std::nullopt;
  if (HasOtherBraces(url) || !std::ranges::all_of(url, IsAddressCharacter)) return std::nullopt;
  return OnlineMap{std::string(url), std::string(attribution)};
}

std::string PictureHosts(const std::optional<OnlineMap>& map) {
  if (!map) return "";
  const std::string& url = map->url;
  const std::size_t start = url.find("://") + 3;
  const std::string host = url.substr(0, url.find_first_of("/?#", start));
  const std::size_t server = host.find(kServerPlace);
  if (server == host.npos) return " " + host;
  std::string hosts;
  for (const char* name : {"a", "b", "c"})
    hosts += " " + std::string(host).replace(server, kServerPlace.size(), name);
  return hosts;
}

}  // namespace pallomir::station
