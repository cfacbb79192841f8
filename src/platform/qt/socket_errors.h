#pragma once

#include "platform/endpoint.h"

namespace pallomir {

/// "No such host" among the system's error codes, which have no number for it.
inline constexpr int kHostNotFound = -1;

/// The error as the user is told of it. `systemCode` is an errno value or kHostNotFound. A code that is not
/// in the table gets the number 10000 + code.
EndpointError ErrorOf(int systemCode);

}  // namespace pallomir
