#include "base/check_code.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "base/check_code_avx2.h"
#include "base/processor.h"

namespace pallomir {
namespace {

constexpr std::uint32_t kStart = 0x5A3C71E9u;
constexpr std::uint32_t kMask = 0x2D9B6C47u;
constexpr int kTurn = 13;

// Taken literally the rule is one chain of dependent steps, code = rotr(byte ^ code ^ kMask, 13). But every
// step is linear over XOR, so the code is the XOR of what start, mask and each byte become by themselves, and
// a byte only becomes itself turned by 13 for each step that follows. 32 such turns are a whole number of
// rounds: bytes that lie a multiple of 32 apart are turned alike, and may be XORed together first. All blocks
// of 32 bytes so fold into a single one; the mask's share in a block cancels that in the next.
constexpr std::size_t kBlock = 32;

// Eight bytes take 104 = 8 (mod 32) turns: bytes that lie 8 apart differ by whole bytes of a word. One word
// holds four of them, and eight steps do for the 32.
std::uint32_t BlockCode(const std::uint8_t* block) {
  std::uint32_t code = 0;
  for (std::size_t i = 0; i < 8; ++i) {
    const std::uint32_t four =
        static_cast<std::uint32_t>(block[24 + i]) | static_cast<std::uint32_t>(block[i]) << 8 |
        static_cast<std::uint32_t>(block[8 + i]) << 16 | static_cast<std::uint32_t>(block[16 + i]) << 24;
    code = std::rotr(code ^ four, kTurn);
  }
  return code;
}

// What the mask alone makes of a block.
constexpr std::uint32_t kMaskBlock = [] {
  std::uint32_t code = 0;
  for (std::size_t i = 0; i < kBlock; ++i) code = std::rotr(code ^ kMask, kTurn);
  return code;
}();

// The start that n zero bytes in front of the text turn into the rule's start: with them every text is a
// whole number of blocks.
constexpr std::array<std::uint32_t, kBlock> kStartBeforeZeros = [] {
  std::array<std::uint32_t, kBlock> starts{kStart};
  for (std::size_t n = 1; n < kBlock; ++n) starts[n] = std::rotl(starts[n - 1], kTurn) ^ kMask;
  return starts;
}();

// Half a block: a vector such as every machine has.
using Half = std::uint64_t __attribute__((vector_size(kBlock / 2)));

Half Load(const std::uint8_t* bytes) {
  Half half;
  std::memcpy(&half, bytes, sizeof half);
  return half;
}

void FoldPlainly(const std::uint8_t* bytes, std::size_t blocks, std::uint8_t* folded) {
  Half a = Load(folded);
  Half b = Load(folded + 16);
  // Four blocks at a time into sums of their own, so that no XOR waits for the one before.
  Half c{}, d{}, e{}, f{}, g{}, h{};
  for (; blocks >= 4; blocks -= 4, bytes += 4 * kBlock) {
    a ^= Load(bytes);
    b ^= Load(bytes + 16);
    c ^= Load(bytes + 32);
    d ^= Load(bytes + 48);
    e ^= Load(bytes + 64);
    f ^= Load(bytes + 80);
    g ^= Load(bytes + 96);
    h ^= Load(bytes + 112);
  }
  for (; blocks > 0; --blocks, bytes += kBlock) {
    a ^= Load(bytes);
    b ^= Load(bytes + 16);
  }
  const Half halves[] = {a ^ c ^ e ^ g, b ^ d ^ f ^ h};
  std::memcpy(folded, halves, kBlock);
}

template <void (&Fold)(const std::uint8_t* bytes, std::size_t blocks, std::uint8_t* folded)>
std::uint32_t CodeBy(ByteView text) {
  // What is no whole block comes first, behind its zeros.
  const std::size_t head = text.size() % kBlock;
  const std::size_t zeros = (kBlock - head) % kBlock;
  const std::size_t blocks = text.size() / kBlock;
  std::array<std::uint8_t, kBlock> block{};
  if (head > 0) std::copy_n(text.begin(), head, block.begin() + zeros);
  Fold(text.data() + head, blocks, block.data());
  return kStartBeforeZeros[zeros] ^ ((blocks + (head > 0)) % 2 ? kMaskBlock : 0) ^ BlockCode(block.data());
}

}  // namespace

std::span<const CheckCodeKernel> CheckCodeKernels() {
  static constexpr CheckCodeKernel kernels[] = {CodeBy<FoldPlainly>, CodeBy<FoldByAvx2>};
  return std::span(kernels).first(HasAvx2() ? 2 : 1);
}

std::uint32_t CheckCode(ByteView text) {
  static const CheckCodeKernel kernel = CheckCodeKernels().back();
  return kernel(text);
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
