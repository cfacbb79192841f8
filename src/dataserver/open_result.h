#pragma once

#include <string_view>

namespace pallomir {

/// The result code of opening a program: above kLastOpenError when it was started.
inline constexpr int kLastOpenError = 32;

/// The code that stands for an errno of a start that failed.
int OpenResultOf(int error);

/// What the user reads about a code up to kLastOpenError.
std::string_view OpenErrorMessage(int code);

}  // namespace pallomir
