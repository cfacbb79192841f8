#include "tracking/packet_stream.h"

#include <algorithm>
#include <cassert>

#include "base/check_code.h"
#include "tracking/packets.h"

namespace pallomir {
namespace {

bool IsWellSized(std::size_t payloadSize) {
  return payloadSize >= kUnitIdSize && payloadSize <= kMaxPayloadSize &&
         (payloadSize - kUnitIdSize) % kRecordSize == 0;
}

}  // namespace

void PacketStream::Take(ByteView arrived) {
  if (held_) {
    Append(pending_, arrived);
    return;
  }
  TakePending();
  Append(buffer_, arrived);
}

void PacketStream::TakePending() {
  Append(buffer_, pending_);
  pending_ = Bytes();  // gives the memory back, as {} does not
}

void PacketStream::Clear() {
  DropAll();
  pending_ = Bytes();
}

PacketStream::Outcome PacketStream::Decode(const PacketHandler& packet) {
  Outcome outcome;
  bool decodedOne = false;
  while (Size() > 0) {
    const ByteView rest = Rest();
    if (rest.size() < kPacketHeaderSize) {
      if (decodedOne) {
        MoveRestToFront();
        outcome.end = End::kShortTail;
        return outcome;
      }
      outcome.message = "Error: Packet size of " + std::to_string(rest.size()) + " is less than 8";
      DropAll();
      continue;
    }
    const std::int32_t length = ReadBigEndianSigned32(rest, 4);
    if (length < 0 || !IsWellSized(static_cast<std::size_t>(length))) {
      outcome.message = "Error: Packet size of " + std::to_string(length) + " is not a multiple of 14";
      DropAll();
      continue;
    }
    const auto size = static_cast<std::size_t>(length);
    if (size > rest.size() - kPacketHeaderSize) {
      MoveRestToFront();
      outcome.end = End::kIncomplete;
      return outcome;
    }
    if (size == rest.size() - kPacketHeaderSize) held_ = true;
    const ByteView payload = rest.subspan(kPacketHeaderSize, size);
    if (CheckCode(payload) != ReadBigEndian32(rest, 0)) {
      outcome.resynchronised = true;
      Clear();
      continue;
    }
    packet(AsText(payload.first(kUnitIdSize)), payload.subspan(kUnitIdSize));
    Drop(kPacketHeaderSize + size);
    decodedOne = true;
  }
  return outcome;
}

void PacketStream::Drop(std::size_t count) {
  read_ += count;
  assert(read_ <= buffer_.size());
  if (read_ == buffer_.size()) DropAll();
}

// Only the beginning of one packet is left over by a Decode, and then it lies at the front until it is whole:
// every byte is moved at most once.
void PacketStream::MoveRestToFront() {
  buffer_.erase(buffer_.begin(), buffer_.begin() + static_cast<std::ptrdiff_t>(read_));
  read_ = 0;
}

void PacketStream::DropAll() {
  buffer_.clear();
  read_ = 0;
  constexpr std::size_t kKeep = std::size_t{1} << 20;
  if (buffer_.capacity() > kKeep) buffer_ = Bytes();
}

}  // namespace pallomir
