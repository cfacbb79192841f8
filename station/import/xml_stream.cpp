#include "station/import/xml_stream.h"

#include <expat.h>
#include <malloc.h>

#include <algorithm>
#include <cassert>
#include <cstdlib>

namespace pallomir::station {
namespace {

// Bytes; enough for tags of a megabyte and for elements nested ten thousand deep. The library keeps every
// name that it has seen, so without a bound a hostile text would fill the memory.
constexpr std::size_t kMaxMemory = 4 * 1024 * 1024;

// As many bytes tell the encoding.
constexpr std::size_t kHeadSize = 4;

// Parts are passed on in pieces of at most this size, because the library copies what it has not used.
constexpr std::size_t kPieceSize = 32 * 1024;

// The library does not say for which parser it wants memory. A parser stays on one thread.
thread_local std::size_t memoryInUse = 0;

void Release(void* block) {
  memoryInUse -= ::malloc_usable_size(block);
  std::free(block);
}

void* Allocate(std::size_t size) {
  if (size > kMaxMemory || memoryInUse + size > kMaxMemory) return nullptr;
  void* const block = std::malloc(size);
  memoryInUse += ::malloc_usable_size(block);
  return block;
}

void* Reallocate(void* block, std::size_t size) {
  const std::size_t before = ::malloc_usable_size(block);
  if (size > kMaxMemory || memoryInUse - before + size > kMaxMemory) return nullptr;
  void* const moved = std::realloc(block, size);
  if (moved != nullptr) memoryInUse += ::malloc_usable_size(moved) - before;
  return moved;
}

// Takes every byte beyond ASCII for some letter. That is right for no text, but makes all readable that are
// ASCII where it matters.
int TakeAnyByte(void*, const XML_Char*, XML_Encoding* encoding) {
  for (int byte = 0; byte < 256; ++byte) encoding->map[byte] = byte < 0x80 ? byte : 0xE4;
  encoding->data = nullptr;
  encoding->convert = nullptr;
  encoding->release = nullptr;
  return XML_STATUS_OK;
}

// The library's name of the encoding if characters have two bytes, otherwise a name that makes it call
// TakeAnyByte.
const char* EncodingOf(std::string_view head) {
  using namespace std::string_view_literals;
  if (head.starts_with("\xFE\xFF"sv) || head.starts_with("\xFF\xFE"sv)) return "UTF-16";
  if (head.starts_with("<\0"sv)) return "UTF-16LE";
  if (head.starts_with("\0<"sv)) return "UTF-16BE";
  return "bytes";
}

std::string_view LocalName(std::string_view name) {
  return name.substr(name.find(':') + 1);  // npos + 1 is 0
}

}  // namespace

std::string_view XmlAttributes::Find(std::string_view name) const {
  for (const char* const* pair = pairs_; *pair != nullptr; pair += 2)
    if (name == *pair) return pair[1];
  return {};
}

struct XmlStream::Callbacks {
  static XmlStream& Of(void* userData) { return *static_cast<XmlStream*>(userData); }

  static void Start(void* userData, const XML_Char* name, const XML_Char** attributes) {
    XmlStream& stream = Of(userData);
    ++stream.depth_;
    if (stream.isStopped_) return;
    if (!stream.events_.OnStart(LocalName(name), XmlAttributes(attributes))) stream.Stop();
  }
  static void End(void* userData, const XML_Char*) {
    XmlStream& stream = Of(userData);
    assert(stream.depth_ > 0);
    stream.isRootClosed_ = --stream.depth_ == 0;
    if (!stream.isStopped_) stream.events_.OnEnd();
  }
  static void Text(void* userData, const XML_Char* text, int size) {
    XmlStream& stream = Of(userData);
    if (!stream.isStopped_) stream.events_.OnText({text, static_cast<std::size_t>(size)});
  }
  static void Doctype(void* userData, const XML_Char*, const XML_Char*, const XML_Char*,
                      int hasDeclarations) {
    if (hasDeclarations == 0) return;
    Of(userData).hasDeclarations_ = true;
    Of(userData).Stop();
  }
};

void XmlStream::FreeParser::operator()(XML_ParserStruct* parser) const { XML_ParserFree(parser); }

XmlStream::XmlStream(XmlEvents& events) : events_(events) {}
XmlStream::~XmlStream() = default;

void XmlStream::Begin() {
  const XML_Memory_Handling_Suite memory{Allocate, Reallocate, Release};
  const char* const encoding = EncodingOf(head_);
  parser_.reset(XML_ParserCreate_MM(encoding, &memory, nullptr));
  XML_SetUserData(parser_.get(), this);
  XML_SetElementHandler(parser_.get(), Callbacks::Start, Callbacks::End);
  XML_SetCharacterDataHandler(parser_.get(), Callbacks::Text);
  XML_SetStartDoctypeDeclHandler(parser_.get(), Callbacks::Doctype);
  XML_SetUnknownEncodingHandler(parser_.get(), TakeAnyByte, nullptr);
  if (head_.starts_with("\xEF\xBB\xBF")) head_.erase(0, 3);
}

bool XmlStream::Take(std::string_view part) {
  if (!parser_) {
    const std::string_view first = part.substr(0, kHeadSize - head_.size());
    head_ += first;
    part.remove_prefix(first.size());
    if (head_.size() < kHeadSize) return true;
    Begin();
    if (!Parse(head_, false)) return false;
  }
  for (; !part.empty(); part.remove_prefix(std::min(part.size(), kPieceSize)))
    if (!Parse(part.substr(0, kPieceSize), false)) return false;
  return !isStopped_;
}

bool XmlStream::Finish() {
  if (parser_) return Parse({}, true);
  Begin();
  return Parse(head_, true);
}

bool XmlStream::Parse(std::string_view part, bool isLast) {
  if (isStopped_) return false;
  if (XML_Parse(parser_.get(), part.data(), static_cast<int>(part.size()), isLast) == XML_STATUS_OK)
    return true;
  if (!isStopped_ || hasDeclarations_) error_ = DescribeError();
  isStopped_ = true;
  return false;
}

void XmlStream::Stop() {
  isStopped_ = true;
  XML_StopParser(parser_.get(), XML_FALSE);
}

std::string XmlStream::DescribeError() const {
  const XML_Error error = XML_GetErrorCode(parser_.get());
  const std::string where = " in line " + std::to_string(XML_GetCurrentLineNumber(parser_.get()));
  if (hasDeclarations_) return "has declarations" + where + ", which a recording needs none of";
  if (error == XML_ERROR_NO_MEMORY)
    return "has" + where + " a tag too long, elements too deep or too many different names";
  if (isRootClosed_) return "goes on behind its end" + where + "; if recordings were joined, part them";
  return "is not XML: " + std::string(XML_ErrorString(error)) + where;
}

}  // namespace pallomir::station
