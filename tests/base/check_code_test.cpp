#include "base/check_code.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace pallomir {
namespace {

// The rule written out with nothing but 64-bit arithmetic.
std::uint64_t ByTheRule(ByteView text) {
  std::uint64_t h = 0x5A3C71E9;
  for (const std::uint64_t c : text) {
    const std::uint64_t x = c ^ h ^ 0x2D9B6C47;
    h = (x / 8192 + x * 524288) % 4294967296;
  }
  return h;
}

TEST(CheckCode, FollowsTheRuleForEveryByteAndLength) {
  std::string text;
  for (int length = 0; length < 600; ++length) {
    for (std::size_t from = 0; from < std::min<std::size_t>(3, text.size()); ++from) {
      const ByteView odd = AsBytes(text).subspan(from);  // texts start anywhere in memory
      for (const CheckCodeKernel kernel : CheckCodeKernels()) {
        ASSERT_EQ(kernel(odd), ByTheRule(odd)) << length << " from " << from;
      }
    }
    text.push_back(static_cast<char>(length * 37 ^ length >> 3));
  }
  EXPECT_EQ(CheckCode({}), ByTheRule({}));
}

TEST(CheckCode, FormsCarryTheLengthBigEndian) {
  const std::string text(0x10203, 'x');
  const Bytes shortForm = ShortCheckForm(AsBytes(text));
  const Bytes longForm = LongCheckForm(AsBytes(text));
  ASSERT_EQ(shortForm.size(), kShortCheckSize);
  ASSERT_EQ(longForm.size(), kLongCheckSize);
  EXPECT_EQ(ReadBigEndian32(shortForm, 0), CheckCode(AsBytes(text)));
  EXPECT_EQ(ReadBigEndian16(shortForm, 4), 0x0203);
  EXPECT_EQ(ReadBigEndian32(longForm, 4), 0x10203u);
  EXPECT_EQ(ShortCheckForm({}), (Bytes{0x5A, 0x3C, 0x71, 0xE9, 0, 0}));
}

}  // namespace
}  // namespace pallomir
