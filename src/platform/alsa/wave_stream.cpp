#include "platform/alsa/wave_stream.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace pallomir {
namespace {

constexpr std::size_t kPieceSize = std::size_t{64} * 1024;
static_assert(kWaveHeadSize <= kPieceSize);

}  // namespace

WaveStream::WaveStream(const std::filesystem::path& file)
    : path_(file.string()), file_(file), piece_(kPieceSize) {
  if (file_.Error()) return;
  const std::size_t size = file_.Read(std::span(piece_).first(kWaveHeadSize));
  const auto parsed = ParseWaveHeader(std::string_view(piece_.data(), size));
  if (const auto* why = std::get_if<std::string>(&parsed)) {
    failure_ = *why;
    return;
  }
  header_ = std::get<WaveHeader>(parsed);
  kept_ = std::min(size - header_.dataOffset, header_.dataBytes);
  left_ = header_.dataBytes - kept_;
  std::copy_n(piece_.begin() + static_cast<std::ptrdiff_t>(header_.dataOffset), kept_, piece_.begin());
}

std::string WaveStream::Failure() const {
  if (file_.Error()) return path_ + ": " + file_.Error().message();
  return failure_.empty() ? "" : path_ + ": " + failure_;
}

std::span<const char> WaveStream::Next() {
  if (!Failure().empty()) return {};
  std::size_t size = std::exchange(kept_, 0);
  const std::size_t wanted = std::min(left_, kPieceSize - size);
  const std::size_t read = file_.Read(std::span(piece_).subspan(size, wanted));
  left_ = read < wanted ? 0 : left_ - read;
  size += read;
  return std::span(piece_).first(size - size % header_.FrameBytes());
}

}  // namespace pallomir
