#include "map/palette_png.h"

#include <libdeflate.h>

#include <bit>
#include <cstring>
#include <string_view>

namespace pallomir {
namespace {

constexpr std::size_t kRowBytes = kTileSize / 2;
// Each row follows the number of its filter, 0: none.
constexpr std::size_t kPictureBytes = kTileSize * (1 + kRowBytes);
static_assert(kPictureBytes <= 0xFFFF, "a stored block holds no more");

void Put32(std::uint8_t* at, std::uint32_t value) {
  for (int i = 0; i < 4; ++i) at[i] = static_cast<std::uint8_t>(value >> (24 - 8 * i));
}

std::uint32_t Crc(ByteView bytes) { return libdeflate_crc32(0, bytes.data(), bytes.size()); }

// Two pixels a byte, the left one in the high half. In pairs of one number each, which the compiler handles
// eight at a time.
void PackRow(const std::uint8_t* pixels, std::uint8_t* packed) {
  std::uint16_t pairs[kRowBytes];
  std::uint8_t row[kRowBytes];
  std::memcpy(pairs, pixels, sizeof pairs);
  constexpr bool kLeftIsLow = std::endian::native == std::endian::little;
  for (std::size_t x = 0; x < kRowBytes; ++x)
    row[x] = static_cast<std::uint8_t>(kLeftIsLow ? pairs[x] << 4 | pairs[x] >> 8 : pairs[x] >> 4 | pairs[x]);
  std::memcpy(packed, row, sizeof row);
}

// A chunk's sum covers its type and its content.
void AppendChunk(Bytes& file, std::string_view type, ByteView content) {
  AppendBigEndian32(file, static_cast<std::uint32_t>(content.size()));
  const std::size_t start = file.size();
  Append(file, AsBytes(type));
  Append(file, content);
  AppendBigEndian32(file, Crc(ByteView(file).subspan(start)));
}

}  // namespace

PalettePng::PalettePng(std::span<const std::uint32_t> palette) {
  Bytes colours;
  Bytes alphas;
  for (const std::uint32_t argb : palette) {
    for (const int shift : {16, 8, 0}) colours.push_back(static_cast<std::uint8_t>(argb >> shift));
    alphas.push_back(static_cast<std::uint8_t>(argb >> 24));
  }
  Bytes header;
  AppendBigEndian32(header, kTileSize);
  AppendBigEndian32(header, kTileSize);
  Append(header, Bytes{4, 3, 0, 0, 0});  // bits a pixel; palette; deflate, usual filters, not interlaced
  // A zlib stream: its two bytes (window of 32 kB, no preset), one block (last, stored) with its length and
  // the length's complement, the picture, and the picture's sum.
  constexpr auto kLow = static_cast<std::uint8_t>(kPictureBytes & 0xFF);
  constexpr auto kHigh = static_cast<std::uint8_t>(kPictureBytes >> 8);
  Bytes data = {0x78, 0x01, 0x01, kLow, kHigh, 0xFF - kLow, 0xFF - kHigh};
  const std::size_t beforePicture = data.size();
  data.resize(beforePicture + kPictureBytes + 4);

  file_ = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  AppendChunk(file_, "IHDR", header);
  AppendChunk(file_, "PLTE", colours);
  AppendChunk(file_, "tRNS", alphas);
  picture_ = file_.size() + 8 + beforePicture;
  AppendChunk(file_, "IDAT", data);
  AppendChunk(file_, "IEND", {});
}

ByteView PalettePng::Encode(TilePixels tile) {
  std::uint8_t* out = &file_[picture_];
  for (int y = 0; y < kTileSize; ++y, tile.rows += tile.stride) {
    ++out;  // the filter
    PackRow(tile.rows, out);
    out += kRowBytes;
  }
  Put32(out, libdeflate_adler32(1, &file_[picture_], kPictureBytes));
  constexpr std::size_t kBeforePicture = 4 + 7;  // "IDAT" and what AppendChunk was given before the picture
  const ByteView summed(&file_[picture_ - kBeforePicture], out + 4);
  Put32(out + 4, Crc(summed));
  return file_;
}

}  // namespace pallomir
