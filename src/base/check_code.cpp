#include "base/check_code.h"

#include <bit>

namespace pallomir {

std::uint32_t CheckCode(ByteView text) {
  std::uint32_t code = 0x5A3C71E9u;
  for (const std::uint8_t byte : text) code = std::rotr(byte ^ code ^ 0x2D9B6C47u, 13);
  return code;
}

Bytes ShortCheckForm(ByteView text) {
  Bytes form;
  AppendBigEndian32(form, CheckCode(text));
  AppendBigEndian16(form, static_cast<std::uint16_t>(text.size()));
  return form;
}

Bytes LongCheckForm(ByteView text) {
  Bytes form;
  AppendBigEndian32(form, CheckCode(text));
  AppendBigEndian32(form, static_cast<std::uint32_t>(text.size()));
  return form;
}

}  // namespace pallomir
