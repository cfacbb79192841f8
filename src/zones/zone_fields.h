#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace pallomir {

/// The fields of a zone file, one after the other; see zone_file.h for how they are separated. A field that
/// is not what was asked for is consumed all the same.
class ZoneFields {
 public:
  explicit ZoneFields(std::string_view file);

  /// Nothing but blank lines is left.
  bool AtEnd() const { return at_ == end_; }

  /// The line, from 1, of the field that was read last.
  std::size_t Line() const { return line_; }

  /// The next field as text without its quotes, a view into the file; nothing at the end, and where a quote
  /// is not closed.
  std::optional<std::string_view> Text();
  /// The next field as a number of digits with an optional sign; infinities and the like are none.
  std::optional<int> Integer();
  std::optional<double> Number();

 private:
  template <class Value>
  std::optional<Value> Parse();
  std::string_view Unquoted();
  void EndField();
  void SkipBlankLines();

  const char* at_;
  const char* end_;
  std::size_t line_ = 1;      // of the field that was read last
  std::size_t nextLine_ = 1;  // of the field that begins at at_
};

}  // namespace pallomir
