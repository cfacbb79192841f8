#include "map/imaging.h"

#include <png.h>

#include <cstdio>
#include <memory>
#include <span>

namespace pallomir {
namespace {

constexpr int kMaxEdge = 4096;

struct EncoderEntry {
  ImageEncoder encoder;
  std::string_view patterns;  // separated by ";"
};
constexpr EncoderEntry kEncoders[] = {{ImageEncoder::kPng, "*.png"}};

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool EqualIgnoringCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (Lower(a[i]) != Lower(b[i])) return false;
  }
  return true;
}

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

}  // namespace

void cGDIP::Error(int status, const std::string& source) const {
  if (raised) raised(status, std::string(Message(status)), source);
}

std::string_view cGDIP::Message(int status) {
  constexpr std::string_view kMessages[] = {"Generic Error",
                                            "Invalid Parameter",
                                            "Out Of Memory",
                                            "Object Busy",
                                            "Insufficient Buffer",
                                            "Not Implemented",
                                            "Win32 Error",
                                            "Wrong State",
                                            "Aborted",
                                            "File Not Found",
                                            "Value Overflow",
                                            "Access Denied",
                                            "Unknown Image Format",
                                            "FontFamily Not Found",
                                            "FontStyle Not Found",
                                            "Not TrueType Font",
                                            "Unsupported Gdiplus Version",
                                            "Gdiplus Not Initialized",
                                            "Property Not Found",
                                            "Property Not Supported"};
  const std::span messages(kMessages);
  if (status < 1 || static_cast<std::size_t>(status) > messages.size()) return "Unknown GDI+ Error";
  return messages[static_cast<std::size_t>(status) - 1];
}

int cBitmap::CreateFromScan0(int width, int height, int stride, std::uint32_t pixelFormat) {
  Dispose();
  if (width < 1 || height < 1 || width > kMaxEdge || height > kMaxEdge || stride != 4 * width ||
      pixelFormat != kPixelFormat32bppARGB) {
    return Report(kInvalidParameter, "CreateFromScan0");
  }
  width_ = width;
  height_ = height;
  pixels_.assign(static_cast<std::size_t>(stride) * static_cast<std::size_t>(height), 0);
  return kImagingOk;
}

int cBitmap::SetPixelLong(int x, int y, std::uint32_t argb) {
  if (x < 0 || y < 0 || x >= width_ || y >= height_) return Report(kInvalidParameter, "SetPixelLong");
  const std::size_t at =
      4 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x));
  for (std::size_t i = 0; i < 4; ++i) pixels_[at + i] = static_cast<std::uint8_t>(argb >> (8 * i));
  return kImagingOk;
}

ImageEncoder cBitmap::EncoderForPattern(std::string_view pattern) {
  for (const EncoderEntry& entry : kEncoders) {
    std::string_view rest = entry.patterns;
    while (!rest.empty()) {
      const std::size_t end = std::min(rest.find(';'), rest.size());
      if (EqualIgnoringCase(rest.substr(0, end), pattern)) return entry.encoder;
      rest.remove_prefix(std::min(end + 1, rest.size()));
    }
  }
  return ImageEncoder::kNone;
}

int cBitmap::SaveToFile(const std::filesystem::path& path, ImageEncoder encoder) {
  if (pixels_.empty()) return Report(kWrongState, "SaveToFile");
  if (encoder != ImageEncoder::kPng) return Report(kUnknownImageFormat, "SaveToFile");
  std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path.c_str(), "wb"));
  if (!file) return Report(kWin32Error, "SaveToFile");
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.width = static_cast<png_uint_32>(width_);
  image.height = static_cast<png_uint_32>(height_);
  image.format = PNG_FORMAT_BGRA;
  image.flags = PNG_IMAGE_FLAG_FAST;
  const bool written = png_image_write_to_stdio(&image, file.get(), 0, pixels_.data(), 0, nullptr) != 0;
  png_image_free(&image);
  // The last bytes may fail only when the file is closed. Half a picture is worse than none.
  if (std::fclose(file.release()) == 0 && written) return kImagingOk;
  std::error_code ignored;
  std::filesystem::remove(path, ignored);
  return Report(kWin32Error, "SaveToFile");
}

void cBitmap::Dispose() {
  width_ = height_ = 0;
  pixels_.clear();
}

int cBitmap::Report(int status, const char* source) const {
  library_.Error(status, source);
  return status;
}

}  // namespace pallomir
