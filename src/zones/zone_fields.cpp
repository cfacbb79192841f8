#include "zones/zone_fields.h"

#include <charconv>
#include <cmath>
#include <cstring>

namespace pallomir {
namespace {

constexpr bool IsBlank(char c) { return c == ' ' || c == '\t'; }
constexpr bool IsLineEnd(char c) { return c == '\r' || c == '\n'; }

}  // namespace

ZoneFields::ZoneFields(std::string_view file) : at_(file.data()), end_(file.data() + file.size()) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (file.starts_with(kByteOrderMark)) at_ += kByteOrderMark.size();
  SkipBlankLines();
}

// At the beginning of a line.
void ZoneFields::SkipBlankLines() {
  const char* p = at_;
  while (true) {
    while (p != end_ && IsBlank(*p)) ++p;
    if (p == end_ || !IsLineEnd(*p)) break;
    if (*p == '\n' || p + 1 == end_ || p[1] != '\n') ++nextLine_;
    at_ = ++p;
  }
  if (p == end_) at_ = end_;
}

// Behind a field's text: drops what stands before the separator, and passes it.
void ZoneFields::EndField() {
  while (at_ != end_ && *at_ != ',' && !IsLineEnd(*at_)) ++at_;
  if (at_ == end_) return;
  if (*at_ == ',') {
    ++at_;
  } else {
    SkipBlankLines();
  }
}

std::string_view ZoneFields::Unquoted() {
  const char* begin = at_;
  while (at_ != end_ && *at_ != ',' && !IsLineEnd(*at_)) ++at_;
  const char* last = at_;
  while (last != begin && IsBlank(last[-1])) --last;
  return {begin, last};
}

std::optional<std::string_view> ZoneFields::Text() {
  if (AtEnd()) return std::nullopt;
  line_ = nextLine_;
  while (at_ != end_ && IsBlank(*at_)) ++at_;
  std::optional<std::string_view> text;
  if (at_ != end_ && *at_ == '"') {
    const char* begin = ++at_;
    at_ = static_cast<const char*>(std::memchr(begin, '"', static_cast<std::size_t>(end_ - begin)));
    if (!at_) {
      at_ = end_;
      return std::nullopt;
    }
    text.emplace(begin, at_);
    for (const char* p = begin; p != at_; ++p) nextLine_ += *p == '\n' ? 1 : 0;
  } else {
    text = Unquoted();
  }
  EndField();
  return text;
}

// A number that stands without quotes and blanks, as it is written, is read in place.
template <class Value>
std::optional<Value> ZoneFields::Parse() {
  Value value{};
  const auto [stop, error] = std::from_chars(at_, end_, value);
  if (error == std::errc() && (stop == end_ || *stop == ',' || IsLineEnd(*stop))) {
    line_ = nextLine_;
    at_ = stop;
    EndField();
    return value;
  }
  auto text = Text();
  if (!text) return std::nullopt;
  while (!text->empty() && IsBlank(text->front())) text->remove_prefix(1);
  while (!text->empty() && IsBlank(text->back())) text->remove_suffix(1);
  if (text->starts_with('+')) text->remove_prefix(1);
  const char* last = text->data() + text->size();
  const auto parsed = std::from_chars(text->data(), last, value);
  if (parsed.ec != std::errc() || parsed.ptr != last) return std::nullopt;
  return value;
}

std::optional<int> ZoneFields::Integer() { return Parse<int>(); }

std::optional<double> ZoneFields::Number() {
  const auto value = Parse<double>();
  return value && std::isfinite(*value) ? value : std::nullopt;
}

}  // namespace pallomir
