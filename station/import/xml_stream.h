#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

struct XML_ParserStruct;

namespace pallomir::station {

/// The attributes of an element, valid while its start is told.
class XmlAttributes {
 public:
  explicit XmlAttributes(const char* const* pairs) : pairs_(pairs) {}
  std::string_view Find(std::string_view name) const;  ///< empty when there is none

 private:
  const char* const* pairs_;
};

/// Is told what a text consists of, in its order. Names are without their prefix.
class XmlEvents {
 public:
  virtual ~XmlEvents() = default;
  virtual bool OnStart(std::string_view name, const XmlAttributes& attributes) = 0;  ///< false: go no further
  virtual void OnEnd() = 0;
  virtual void OnText(std::string_view part) = 0;  ///< a text may come in several parts
};

/// Reads XML that arrives in parts of any size, in a few megabytes of memory whatever comes. What it tells is
/// certain to be right in ASCII only: other characters may arrive as some letter, so that a text in any usual
/// encoding can be read, declared rightly or not. Declarations (of entities, of attributes) are an error:
/// with them a short text can stand for an endless one.
class XmlStream {
 public:
  explicit XmlStream(XmlEvents& events);
  ~XmlStream();

  /// False once there is nothing more to read: after an error, or when the events wanted no more.
  bool Take(std::string_view part);
  bool Finish();

  /// "is not XML: …" with the line; empty while all is well.
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
