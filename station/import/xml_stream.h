#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

struct XML_ParserStruct;

namespace pallomir::station {

/// The attributes of an element, valid during XmlEvents::OnStart.
class XmlAttributes {
 public:
  explicit XmlAttributes(const char* const* pairs) : pairs_(pairs) {}
  /// The value of the attribute; empty if there is none.
  std::string_view Find(std::string_view name) const;

 private:
  const char* const* pairs_;
};

/// Is told of the parts of a text, in their order. Element names come without their prefix.
class XmlEvents {
 public:
  virtual ~XmlEvents() = default;
  /// An element begins. False to read no further.
  virtual bool OnStart(std::string_view name, const XmlAttributes& attributes) = 0;
  /// The element that began last and has not ended yet ends.
  virtual void OnEnd() = 0;
  /// Text within an element, possibly in several parts.
  virtual void OnText(std::string_view part) = 0;
};

/// Reads XML in parts of any size, using at most a few megabytes whatever the text is. Only ASCII is passed
/// on exactly: any other character may become some letter, so that texts in all usual encodings can be read,
/// even if they declare a wrong one. Declarations of entities or attributes are an error, because with them a
/// short text can stand for an endless one.
class XmlStream {
 public:
  /// The events must outlive the stream.
  explicit XmlStream(XmlEvents& events);
  ~XmlStream();

  /// Reads the next part. False once there is no point in going on: after an error, or if OnStart said so.
  bool Take(std::string_view part);
  /// Says that the text has ended. False after an error.
  bool Finish();

  /// What is wrong ("is not XML: ...") and in which line; empty if nothing is.
  const std::string& Error() const { return error_; }

 private:
  struct Callbacks;
  struct FreeParser {
    void operator()(XML_ParserStruct* parser) const;
  };

  void Begin();
  bool Parse(std::string_view part, bool isLast);
  void Stop();
  std::string DescribeError() const;

  XmlEvents& events_;
  std::unique_ptr<XML_ParserStruct, FreeParser> parser_;
  std::string head_;  ///< the first bytes, until they tell the encoding
  std::size_t depth_ = 0;
  bool isRootClosed_ = false;
  bool isStopped_ = false;
  bool hasDeclarations_ = false;
  std::string error_;
};

}  // namespace pallomir::station
