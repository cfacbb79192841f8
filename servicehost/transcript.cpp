#include "servicehost/transcript.h"

#include <unistd.h>

#include <iostream>

#include "base/whole_file.h"

namespace pallomir::servicehost {
namespace {

// A message box shows the whole of it.
constexpr std::size_t kMaxLines = 20;
constexpr std::size_t kMaxLine = 400;

constexpr std::size_t kMaxDetail = 256 * 1024;

// Two runs at once must not write into each other's file.
std::error_code Replace(const std::filesystem::path& file, const std::string& text) {
  std::filesystem::path ours = file;
  ours += "." + std::to_string(::getpid());
  std::error_code error = ReplaceFile(ours, text), ignored;
  if (error) return error;
  std::filesystem::rename(ours, file, error);
  if (error) std::filesystem::remove(ours, ignored);
  return error;
}

// As much as fits, without half a UTF-8 character at the end.
std::string Shortened(std::string_view text) {
  if (text.size() <= kMaxLine) return std::string(text);
  std::size_t end = kMaxLine;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
  return std::string(text.substr(0, end)) + "...";
}

}  // namespace

Transcript::Transcript(std::filesystem::path folder)
    : file_(folder / "ServiceName.InstallLog"), log_(folder / "ServiceName.log", kMaxDetail) {}

std::error_code Transcript::Begin(const std::string& title) {
  title_ = title + " (" + LocalTimeText() + ")\n\n";
  log_.Write(title);
  return Replace(file_, title_ + "This run has not finished.\n");
}

void Transcript::Say(std::string_view sentence) {
  if (lines_.size() < kMaxLines) lines_.push_back(Shortened(sentence));
  log_.Write(sentence);
}

std::error_code Transcript::Finish() {
  std::string text = title_;
  for (const std::string& line : lines_) text += line + "\n";
  std::cout << text << std::flush;
  return Replace(file_, text);
}

}  // namespace pallomir::servicehost
