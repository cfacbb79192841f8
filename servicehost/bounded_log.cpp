#include "servicehost/bounded_log.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <ctime>
#include <string>

namespace pallomir::servicehost {
namespace {

constexpr std::size_t kMaxLine = 2000;

}  // namespace

BoundedLog::BoundedLog(std::filesystem::path file, std::size_t limit)
    : file_(std::move(file)), limit_(limit) {
  Open();
}

void BoundedLog::Open() {
  stream_ = Descriptor(::open(file_.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0644));
  struct stat status {};
  size_ = ::fstat(stream_.Get(), &status) == 0 ? static_cast<std::size_t>(status.st_size) : 0;
}

void BoundedLog::Write(std::string_view line) {
  if (size_ >= limit_) {
    std::error_code ignored;
    std::filesystem::path kept = file_;
    kept += ".1";
    std::filesystem::rename(file_, kept, ignored);
    Open();
    if (size_ >= limit_) return;  // it could not be moved away: full is full
  }
  const std::string text = LocalTimeText() + "  " + std::string(line.substr(0, kMaxLine)) + "\n";
  if (::write(stream_.Get(), text.data(), text.size()) > 0) size_ += text.size();
}

std::string LocalTimeText() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  ::localtime_r(&now, &local);
  char text[32];
  std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local);
  return text;
}

}  // namespace pallomir::servicehost
