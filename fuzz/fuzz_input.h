#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "base/bytes.h"

// What every target needs: bytes to make decisions of, and a way to say that a rule is broken.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Ends the run as a finding when `rule` does not hold. Not an assert: it holds in release builds too.
#define PALLOMIR_DEMAND(rule)                                                               \
  do {                                                                                      \
    if (!(rule)) {                                                                          \
      std::fprintf(stderr, "%s:%d: broken: %s\n", __FILE__, __LINE__, #rule), std::abort(); \
    }                                                                                       \
  } while (false)

namespace pallomir::fuzz {

/// Reads an input from front to back. What is no longer there is zero or empty.
class FuzzInput {
 public:
  FuzzInput(const std::uint8_t* data, std::size_t size) : rest_(data, size) {}

  bool IsEmpty() const { return rest_.empty(); }

  std::uint8_t Byte() {
    if (rest_.empty()) return 0;
    const std::uint8_t byte = rest_.front();
    rest_ = rest_.subspan(1);
    return byte;
  }

  std::uint16_t Word() {
    const int high = Byte();
    return static_cast<std::uint16_t>(high << 8 | Byte());
  }

  ByteView Take(std::size_t count) {
    const ByteView taken = rest_.first(count < rest_.size() ? count : rest_.size());
    rest_ = rest_.subspan(taken.size());
    return taken;
  }

  ByteView Rest() { return Take(rest_.size()); }

 private:
  ByteView rest_;
};

}  // namespace pallomir::fuzz
