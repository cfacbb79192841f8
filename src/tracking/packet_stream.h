#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "base/bytes.h"

namespace pallomir {

/// The bytes of the data connection on their way to the store: what has arrived and is not decoded yet, what
/// came while the hold flag was set, and the flag.
///
/// The flag is set when a packet ends exactly where the buffer ends: the batch is complete. While it is set
/// arrivals only gather in the pending text, until a user's fit or a reload clears it.
class PacketStream {
 public:
  /// The pending text is held to this; beyond it the socket is not read.
  static constexpr std::size_t kMaxPending = std::size_t{64} << 20;

  bool IsHeld() const { return held_; }
  void Hold() { held_ = true; }
  void ClearHold() { held_ = false; }

  /// Takes an arrival: into the pending text while held, else into the buffer, behind what was pending.
  void Take(ByteView arrived);

  /// Moves the pending text into the buffer.
  void TakePending();

  bool IsEmpty() const { return Size() == 0 && pending_.empty(); }
  std::size_t PendingSize() const { return pending_.size(); }
  /// Bytes in the buffer.
  std::size_t Size() const { return buffer_.size() - read_; }
  /// Memory taken, in bytes.
  std::size_t ReservedBytes() const { return buffer_.capacity() + pending_.capacity(); }

  /// Drops all bytes; the flag stays.
  void Clear();

  using PacketHandler = std::function<void(std::string_view unitId, ByteView records)>;

  enum class End {
    kDrained,     ///< the buffer is empty: the batch can be shown
    kIncomplete,  ///< the rest of a packet is to come
    kShortTail,   ///< fewer than 8 bytes are left behind whole packets
  };

  struct Outcome {
    End end = End::kDrained;
    std::string message;          ///< an error to show, or empty
    bool resynchronised = false;  ///< a check code differed and everything was dropped
  };

  /// Decodes all whole packets in the buffer. A short tail behind at least one of them is left, because the
  /// rest of a split header may still come; one that is all there is in the buffer is an error.
  Outcome Decode(const PacketHandler& packet);

 private:
  ByteView Rest() const { return ByteView(buffer_).subspan(read_); }
  void Drop(std::size_t count);
  void DropAll();
  void MoveRestToFront();

  Bytes buffer_;
  std::size_t read_ = 0;  // what lies before it is decoded
  Bytes pending_;
  bool held_ = false;
};

}  // namespace pallomir
