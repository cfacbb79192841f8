#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "station/store/position_source.h"
#include "station/wire/locator_messages.h"

namespace pallomir::station {

/// What a client asks of the Base Server:
///
///     <12-character unit IDs, one after the other>~YYYY-MM-DD HH:MM:SS~YYYY-MM-DD HH:MM:SS~~
///
/// Both times are UTC and belong to the window.
struct DataRequest {
  std::vector<std::string> unitIds;  ///< as asked, without repetitions
  TimeWindow window;
};

/// The length of the longest request, in bytes.
inline constexpr std::size_t kMaxDataRequestSize = kMaxUnitsPerRequest * 12 + 1 + 19 + 1 + 19 + 2;

/// The end of every request.
inline constexpr std::string_view kDataRequestEnd = "~~";

/// Reads the whole text of a request, including its end. Nothing for a malformed one, which one without units
/// or with more than kMaxUnitsPerRequest is, too. A window that ends before it starts is well-formed: it is
/// empty.
std::optional<DataRequest> ParseDataRequest(std::string_view text);

}  // namespace pallomir::station
