#include "base/growing_array.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace pallomir {
namespace {

#if defined(__linux__)

// Blocks from here on are mappings of their own. The C library would do the same, but only from a size that
// it raises, up to 32 MB, while a program runs; below that it copies.
constexpr std::size_t kMapped = std::size_t{64} << 10;

void* Map(std::size_t size) {
  void* const mapped = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  return mapped == MAP_FAILED ? nullptr : mapped;
}

void* Remap(void* mapped, std::size_t old, std::size_t size) {
  void* const moved = mremap(mapped, old, size, MREMAP_MAYMOVE);
  return moved == MAP_FAILED ? nullptr : moved;
}

void Unmap(void* mapped, std::size_t size) { munmap(mapped, size); }

#else

// No block gets as large, so these are never called.
constexpr std::size_t kMapped = SIZE_MAX;
void* Map(std::size_t) { return nullptr; }
void* Remap(void*, std::size_t, std::size_t) { return nullptr; }
void Unmap(void*, std::size_t) {}

#endif

std::size_t InPages(std::size_t size) {
  constexpr std::size_t kPage = 4096;
  return (size + kPage - 1) / kPage * kPage;
}

}  // namespace

MemoryBlock::~MemoryBlock() {
  if (size_ >= kMapped) {
    Unmap(data_, size_);
  } else {
    std::free(data_);
  }
}

void MemoryBlock::Grow(std::size_t size) {
  if (size <= size_) return;
  void* grown = nullptr;
  if (size < kMapped) {
    grown = std::realloc(data_, size);
  } else {
    size = InPages(size);
    grown = size_ >= kMapped ? Remap(data_, size_, size) : Map(size);
    if (grown && size_ > 0 && size_ < kMapped) {
      std::memcpy(grown, data_, size_);
      std::free(data_);
    }
  }
  if (!grown) throw std::bad_alloc();
  data_ = grown;
  size_ = size;
}

void MemoryBlock::Shrink(std::size_t size) {
  size = InPages(size);
  if (size < kMapped || size >= size_) return;
  if (void* const shrunk = Remap(data_, size_, size)) {
    data_ = shrunk;
    size_ = size;
  }
}

}  // namespace pallomir
