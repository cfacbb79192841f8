#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace pallomir {

using Bytes = std::vector<std::uint8_t>;
using ByteView = std::span<const std::uint8_t>;

/// The characters of `text`, one byte each. Valid as long as `text`.
inline ByteView AsBytes(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

inline std::string_view AsText(ByteView bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// Big-endian fields, the only byte order on the wire and in data files. The caller has checked that
/// `position` and the field's width lie inside `bytes`.
inline std::uint16_t ReadBigEndian16(ByteView bytes, std::size_t position) {
  return static_cast<std::uint16_t>(bytes[position] << 8 | bytes[position + 1]);
}

inline std::uint32_t ReadBigEndian32(ByteView bytes, std::size_t position) {
  return static_cast<std::uint32_t>(bytes[position]) << 24 |
         static_cast<std::uint32_t>(bytes[position + 1]) << 16 |
         static_cast<std::uint32_t>(bytes[position + 2]) << 8 |
         static_cast<std::uint32_t>(bytes[position + 3]);
}

/// The same four bytes as two's complement: values above 2147483647 wrap to negative.
inline std::int32_t ReadBigEndianSigned32(ByteView bytes, std::size_t position) {
  return static_cast<std::int32_t>(ReadBigEndian32(bytes, position));
}

inline void AppendBigEndian16(Bytes& out, std::uint16_t value) {
  out.push_back(static_cast<std::uint8_t>(value >> 8));
  out.push_back(static_cast<std::uint8_t>(value));
}

inline void AppendBigEndian32(Bytes& out, std::uint32_t value) {
  AppendBigEndian16(out, static_cast<std::uint16_t>(value >> 16));
  AppendBigEndian16(out, static_cast<std::uint16_t>(value));
}

inline void Append(Bytes& out, ByteView more) { out.insert(out.end(), more.begin(), more.end()); }

}  // namespace pallomir
