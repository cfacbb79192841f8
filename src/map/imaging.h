#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace pallomir {

/// Status of an imaging call; 0 is success.
enum ImagingStatus {
  kImagingOk = 0,
  kGenericError = 1,
  kInvalidParameter = 2,
  kOutOfMemory = 3,
  kWin32Error = 7,
  kWrongState = 8,
  kUnknownImageFormat = 13,
};

/// 32 bits a pixel, straight alpha, 0xAARRGGBB.
inline constexpr std::uint32_t kPixelFormat32bppARGB = 0x0026200A;

/// Turns the status of failed imaging calls into messages and reports them. The notification goes to whoever
/// set `raised`: the client traces it.
class cGDIP {
 public:
  std::function<void(int status, const std::string& message, const std::string& source)> raised;

  void Error(int status, const std::string& source) const;

  static std::string_view Message(int status);
};

/// What an image can be written as.
enum class ImageEncoder { kNone, kPng };

/// At most one image at a time: created, painted pixel by pixel, saved, released. Every failed call is
/// reported through the cGDIP.
class cBitmap {
 public:
  explicit cBitmap(const cGDIP& library) : library_(library) {}

  /// A new image, all transparent, in place of the current one. Width and height 1..4096; the stride is 4
  /// bytes a pixel; the only format is kPixelFormat32bppARGB.
  int CreateFromScan0(int width, int height, int stride, std::uint32_t pixelFormat);

  int SetPixelLong(int x, int y, std::uint32_t argb);

  /// The encoder whose list of patterns has this one ("*.png"), ignoring letter case.
  static ImageEncoder EncoderForPattern(std::string_view pattern);

  /// Replaces the file. An image is kept after saving.
  int SaveToFile(const std::filesystem::path& path, ImageEncoder encoder);

  void Dispose();

 private:
  int Report(int status, const char* source) const;

  const cGDIP& library_;
  int width_ = 0;
  int height_ = 0;
  std::vector<std::uint8_t> pixels_;  // B, G, R, A
};

}  // namespace pallomir
