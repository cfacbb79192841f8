#include "base/growing_array.h"

#include <cstdlib>
#include <new>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace pallomir {
namespace {

// Blocks from here on are mappings of their own. The C library would do the same, but only from a size that
// it raises, up to 32 MB, while a program runs; below that it copies.
#if defined(__linux__)
constexpr std::size_t kMapped = std::size_t{64} << 10;
#else
constexpr std::size_t kMapped = SIZE_MAX;
#endif
constexpr std::size_t kPage = 4096;

void* Map([[maybe_unused]] void* mapped, [[maybe_unused]] std::size_t old,
          [[maybe_unused]] std::size_t size) {
#if defined(__linux__)
  void* const grown = mapped
                          ? mremap(mapped, old, size, MREMAP_MAYMOVE)
                          : mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (grown != MAP_FAILED) return grown;
#endif
  return nullptr;
}

void Free(void* data, std::size_t size) {
#if defined(__linux__)
  if (size >= kMapped) {
    munmap(data, size);
    return;
  }
#endif
  (void)size;
  std::free(data);
}

}  // namespace

MemoryBlock::~MemoryBlock() {
  if (data_) Free(data_, size_);
}

void MemoryBlock::Grow(std::size_t size) {
  if (size <= size_) return;
  void* grown = nullptr;
  if (size < kMapped) {
    grown = std::realloc(data_, size);
  } else {
    size = (size + kPage - 1) / kPage * kPage;
    const bool wasMapped = size_ >= kMapped;
    grown = Map(wasMapped ? data_ : nullptr, size_, size);
    if (grown && data_ && !wasMapped) {
      __builtin_memcpy(grown, data_, size_);
      std::free(data_);
    }
  }
  if (!grown) throw std::bad_alloc();
  data_ = grown;
  size_ = size;
}

}  // namespace pallomir
