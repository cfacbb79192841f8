#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/check_code.h"
#include "base/packed_time.h"
#include "fuzz_input.h"
#include "oracles/literal_rules.h"
#include "tracking/packet_stream.h"
#include "tracking/point_store.h"

// The data connection: bytes, whole packets, spoilt packets, in any pieces, with the hold flag cleared at any
// moment. The stream must frame as a literal one does, and the store must hold what the literal merge holds.
//
// Flags: -max_len=112

namespace pallomir::fuzz {
namespace {

constexpr std::array<std::string_view, 3> kUnits{"0013A20040B1", "0013A20040B2", "FFFFFFFFFFFF"};
constexpr std::size_t kKnownUnits = 2;  // the third one's packets are passed over

struct Packet {
  std::string unitId;
  Bytes records;
  bool operator==(const Packet&) const = default;
};

/// Framing with erase from the front, one packet after the other.
class LiteralStream {
 public:
  void Take(ByteView arrived) {
    if (held) return Append(pending, arrived);
    TakePending();
    Append(buffer, arrived);
  }

  void TakePending() {
    Append(buffer, pending);
    pending.clear();
  }

  PacketStream::End Decode(std::vector<Packet>& packets) {
    for (bool decodedOne = false; !buffer.empty();) {
      if (buffer.size() < 8) {
        if (decodedOne) return PacketStream::End::kShortTail;
        buffer.clear();
        continue;
      }
      const std::int64_t length = ReadBigEndianSigned32(buffer, 4);
      const auto whole = static_cast<std::int64_t>(buffer.size()) - 8;
      if (length < 12 || (length - 12) % 14 != 0 || length > static_cast<std::int64_t>(kMaxPayloadSize)) {
        buffer.clear();
        continue;
      }
      if (length > whole) return PacketStream::End::kIncomplete;
      if (length == whole) held = true;
      const ByteView payload = ByteView(buffer).subspan(8, static_cast<std::size_t>(length));
      const Bytes header = LongCheckForm(payload);
      if (!std::equal(header.begin(), header.end(), buffer.begin())) {
        buffer.clear();
        pending.clear();
        continue;
      }
      packets.push_back({std::string(AsText(payload.first(12))), Bytes(payload.begin() + 12, payload.end())});
      buffer.erase(buffer.begin(), buffer.begin() + 8 + length);
      decodedOne = true;
    }
    return PacketStream::End::kDrained;
  }

  Bytes buffer;
  Bytes pending;
  bool held = false;
};

class Session {
 public:
  void Arrive(ByteView bytes) {
    const std::size_t piece = pieceSize_ == 0 ? bytes.size() : pieceSize_;
    while (!bytes.empty()) {
      const ByteView next = bytes.first(std::min(piece, bytes.size()));
      bytes = bytes.subspan(next.size());
      stream_.Take(next);
      literal_.Take(next);
      if (!stream_.IsHeld()) Decode();
      Compare();
    }
  }

  void ClearHold() {
    stream_.ClearHold();
    stream_.TakePending();
    literal_.held = false;
    literal_.TakePending();
    Decode();
    Compare();
  }

  void Clear() {
    stream_.Clear();
    literal_.buffer.clear();
    literal_.pending.clear();
    Compare();
  }

  void SetPieceSize(std::size_t size) { pieceSize_ = size; }

 private:
  void Decode() {
    std::vector<Packet> packets;
    const auto outcome = stream_.Decode([&packets](std::string_view unitId, ByteView records) {
      packets.push_back({std::string(unitId), Bytes(records.begin(), records.end())});
    });
    std::vector<Packet> expected;
    const PacketStream::End end = literal_.Decode(expected);
    PALLOMIR_DEMAND(outcome.end == end);
    PALLOMIR_DEMAND(packets == expected);
    for (const Packet& packet : packets) Merge(packet);
  }

  void Compare() const {
    PALLOMIR_DEMAND(stream_.IsHeld() == literal_.held);
    PALLOMIR_DEMAND(stream_.Size() == literal_.buffer.size());
    PALLOMIR_DEMAND(stream_.PendingSize() == literal_.pending.size());
  }

  void Merge(const Packet& packet) {
    const auto unit = static_cast<std::size_t>(std::ranges::find(kUnits, packet.unitId) - kUnits.begin());
    if (unit >= kKnownUnits) return;
    const DecodedRecords decoded = DecodeRecords(packet.records);
    const auto time = [](const DataPoint& row) { return WithoutFlag(row.time); };
    PALLOMIR_DEMAND(std::ranges::is_sorted(decoded.rows, {}, time));
    PALLOMIR_DEMAND(std::ranges::adjacent_find(decoded.rows, {}, time) == decoded.rows.end());
    PALLOMIR_DEMAND(decoded.rows.size() + decoded.leftOut <= packet.records.size() / kRecordSize);
    PALLOMIR_DEMAND(store_.Merge(unit + 1, decoded.rows));

    std::vector<WireRecord> wire;
    for (std::size_t at = 0; at < packet.records.size(); at += kRecordSize)
      wire.push_back(DecodeRecord(packet.records, at));
    oracles::LiteralTrack& literal = tracks_[unit];
    oracles::LiteralMerge(literal, wire);

    const UnitTrack& track = store_.Track(unit + 1);
    PALLOMIR_DEMAND(std::ranges::equal(track.Points(), literal.rows));
    PALLOMIR_DEMAND(std::ranges::equal(track.Miles(), literal.miles));
    PALLOMIR_DEMAND(std::ranges::all_of(track.Miles(), [](double miles) { return std::isfinite(miles); }));
    PALLOMIR_DEMAND(store_.PointCount() == tracks_[0].rows.size() + tracks_[1].rows.size());
    const DataPoint* newest = store_.Newest();
    PALLOMIR_DEMAND((newest == nullptr) == (store_.PointCount() == 0));
    for (const auto& known : tracks_)
      PALLOMIR_DEMAND(known.rows.empty() || time(known.rows.back()) <= time(*newest));
  }

  static PointStore TwoUnits() {
    PointStore store;
    store.Reset(kKnownUnits);
    return store;
  }

  PacketStream stream_;
  LiteralStream literal_;
  PointStore store_ = TwoUnits();
  std::array<oracles::LiteralTrack, kKnownUnits> tracks_;
  std::size_t pieceSize_ = 0;
};

// A few bytes for a possible record, so that times meet.
WireRecord SmallRecord(FuzzInput& input) {
  static const std::uint32_t kBase = EncodePackedTime(ToMillis({2026, 11, 22, 12})).value_or(0);
  const std::uint8_t time = input.Byte();
  const std::uint8_t place = input.Byte();
  const std::uint32_t flag = time & 0x80 ? kPackedTimeFlag : 0;
  constexpr std::int32_t kEdge = 54'000'000 / 7;
  return {(kBase + (time & 0x3F)) | flag, ((place & 15) - 8) * kEdge, ((place >> 4) - 8) * 2 * kEdge, place};
}

Bytes MadePacket(FuzzInput& input, bool small) {
  const std::uint8_t shape = input.Byte();
  const std::string_view unit = kUnits[shape % kUnits.size()];
  Bytes payload;
  Append(payload, AsBytes(unit));
  for (int i = shape / 16; i > 0 && !input.IsEmpty(); --i) {
    if (small) {
      AppendRecord(payload, SmallRecord(input));
    } else {
      const ByteView raw = input.Take(kRecordSize);
      Append(payload, raw);
    }
  }
  Bytes packet = LongCheckForm(payload);
  Append(packet, payload);
  return packet;
}

}  // namespace
}  // namespace pallomir::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace pallomir;
  fuzz::FuzzInput input(data, size);
  fuzz::Session session;
  while (!input.IsEmpty()) {
    const char what = static_cast<char>(input.Byte());
    if (what == 'p' || what == 'r') {
      session.Arrive(fuzz::MadePacket(input, what == 'p'));
    } else if (what == 'x') {
      const std::uint8_t where = input.Byte();
      const std::uint8_t change = input.Byte();
      Bytes packet = fuzz::MadePacket(input, true);
      packet[where % packet.size()] ^= change;
      session.Arrive(packet);
    } else if (what == 'h') {
      session.ClearHold();
    } else if (what == 's') {
      session.SetPieceSize(input.Byte());
    } else if (what == 'c') {
      session.Clear();
    } else {
      session.Arrive(input.Take(input.Byte()));
    }
  }
  return 0;
}
