#include "base/number_format.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace pallomir {
namespace {

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  return text;
}

template <class Number>
std::optional<Number> ParseWhole(std::string_view text) {
  text = Trimmed(text);
  Number number{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return number;
}

// Digits of |value|, rounded half away from zero in decimal: the nudge lifts a half that binary holds a hair
// too low (1.005) over the edge, and is far below half of the last digit that anyone asks for.
std::string UnsignedFixed(double value, int integerDigits, int decimals) {
  char text[400];
  const double nudged = std::fabs(value) * (1 + 4e-16);
  std::snprintf(text, sizeof text, "%0*.*f", integerDigits + (decimals > 0 ? decimals + 1 : 0), decimals,
                nudged);
  return text;
}

bool IsZero(const std::string& digits) { return digits.find_first_not_of("0.") == std::string::npos; }

}  // namespace

std::string FormatFixed(double value, int integerDigits, int decimals) {
  const std::string digits = UnsignedFixed(value, integerDigits, decimals);
  return value < 0 && !IsZero(digits) ? "-" + digits : digits;
}

std::string FormatSigned(double value, int integerDigits, int decimals) {
  const std::string digits = UnsignedFixed(value, integerDigits, decimals);
  return (value < 0 && !IsZero(digits) ? "-" : "+") + digits;
}

std::string FormatInteger(std::int64_t value, int digits) {
  char text[32];
  std::snprintf(text, sizeof text, "%0*lld", digits, static_cast<long long>(value));
  return text;
}

std::string HexDigits(std::uint64_t value, int digits) {
  std::string text(static_cast<std::size_t>(digits), '0');
  for (auto digit = text.rbegin(); digit != text.rend(); ++digit, value >>= 4)
    *digit = "0123456789ABCDEF"[value & 15];
  return text;
}

std::optional<double> ParseNumber(std::string_view text) {
  const auto number = ParseWhole<double>(text);
  return number && std::isfinite(*number) ? number : std::nullopt;
}

std::optional<std::int64_t> ParseInteger(std::string_view text) { return ParseWhole<std::int64_t>(text); }

std::optional<std::uint64_t> ParseHex(std::string_view text) {
  std::uint64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, 16);
  if (error != std::errc{} || end != text.data() + text.size() || text.empty() || text.size() > 16)
    return std::nullopt;
  return value;
}

}  // namespace pallomir
