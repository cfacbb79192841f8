#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace pallomir {

/// `value` with exactly `decimals` digits behind the point and at least `integerDigits` before it, rounded
/// half away from zero; a negative value that rounds to zero has no sign.
std::string FormatFixed(double value, int integerDigits, int decimals);

/// The same with the sign always shown: "+040.712800". The form of degrees in page fields has 3 and 6 digits.
std::string FormatSigned(double value, int integerDigits, int decimals);

/// A whole number with at least `digits` digits: "07".
std::string FormatInteger(std::int64_t value, int digits);

/// The rightmost `digits` upper-case hexadecimal digits, padded with "0".
std::string HexDigits(std::uint64_t value, int digits);

/// A decimal number with an optional sign and surrounding blanks, whole text; nothing for any other text,
/// infinities and out-of-range values included.
std::optional<double> ParseNumber(std::string_view text);
std::optional<std::int64_t> ParseInteger(std::string_view text);

/// Hexadecimal digits only, both cases, no sign, up to 16 digits.
std::optional<std::uint64_t> ParseHex(std::string_view text);

}  // namespace pallomir
