#pragma once

#include <malloc.h>

#include <cstddef>
#ifdef __SANITIZE_ADDRESS__
// Of the sanitizer's run-time library; not every compiler ships its header.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace pallomir::fakes {

/// What this process has on the heap.
inline std::size_t AllocatedBytes() {
#ifdef __SANITIZE_ADDRESS__
  return __sanitizer_get_current_allocated_bytes();
#else
  const auto info = ::mallinfo2();
  return info.uordblks + info.hblkhd;
#endif
}

}  // namespace pallomir::fakes
