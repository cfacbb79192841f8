#pragma once

#include <cstddef>
#include <span>
#include <type_traits>
#include <utility>

namespace pallomir {

/// One piece of memory that can grow. Of some size on it moves its pages instead of its bytes, so that
/// growing in small steps costs next to nothing.
class MemoryBlock {
 public:
  MemoryBlock() = default;
  MemoryBlock(MemoryBlock&& other) noexcept
      : data_(std::exchange(other.data_, nullptr)), size_(std::exchange(other.size_, 0)) {}
  MemoryBlock& operator=(MemoryBlock&& other) noexcept {
    std::swap(data_, other.data_);
    std::swap(size_, other.size_);
    return *this;
  }
  ~MemoryBlock();

  void* Data() const { return data_; }
  std::size_t Size() const { return size_; }

  /// At least `size` bytes, what was there unchanged. Throws std::bad_alloc.
  void Grow(std::size_t size);

  /// Gives back what lies behind `size` bytes, where that is more than a few pages.
  void Shrink(std::size_t size);

 private:
  void* data_ = nullptr;
  std::size_t size_ = 0;
};

/// A list of millions that grows in batches: reserves an eighth, does not copy itself while it grows, and
/// leaves new elements to the caller to fill.
template <typename T>
class GrowingArray {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  GrowingArray() = default;
  GrowingArray(GrowingArray&& other) noexcept
      : block_(std::move(other.block_)), size_(std::exchange(other.size_, 0)) {}
  GrowingArray& operator=(GrowingArray&& other) noexcept {
    std::swap(block_, other.block_);
    std::swap(size_, other.size_);
    return *this;
  }

  T* Data() const { return static_cast<T*>(block_.Data()); }
  std::size_t Size() const { return size_; }
  std::size_t Capacity() const { return block_.Size() / sizeof(T); }
  std::span<const T> View() const { return {Data(), size_}; }

  /// Elements beyond the size before have any content.
  void Resize(std::size_t size) {
    if (size > Capacity()) block_.Grow((size + size / 8) * sizeof(T));
    size_ = size;
  }

  /// Gives memory back that is beyond the usual reserve.
  void TrimReserve() { block_.Shrink((size_ + size_ / 8) * sizeof(T)); }

  /// No elements. Up to `keepBytes` of memory stay for the next ones.
  void Clear(std::size_t keepBytes) {
    if (block_.Size() > keepBytes) block_ = {};
    size_ = 0;
  }

 private:
  MemoryBlock block_;
  std::size_t size_ = 0;
};

}  // namespace pallomir
