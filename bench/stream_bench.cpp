#include <benchmark/benchmark.h>
#include <libdeflate.h>

#include <algorithm>
#include <cstring>
#include <numeric>
#include <random>

#include "base/check_code.h"
#include "gate_table.h"
#include "map/bulk_projection.h"
#include "map/projection.h"
#include "oracles/literal_rules.h"
#include "tracking/packet_stream.h"
#include "tracking/packets.h"
#include "tracking/point_store.h"
#include "tracking/record_rows.h"
#include "tracking/travelled_miles.h"
#include "vector_math.h"

// The road of the data from the bytes of the connection to points and miles, step by step and as a whole. The
// tests check that every step gives what the rule gives.

namespace pallomir::bench {
namespace {

constexpr std::size_t kUnits = 10;
constexpr std::size_t kPoints = 1'000'000;
constexpr std::size_t kArrival = std::size_t{64} << 10;

std::string UnitId(std::size_t k) { return "0123456789A" + std::string(1, "0123456789ABCDEF"[k]); }

// A vehicle's walk: one report a second, some 20 m apart.
std::vector<WireRecord> Walk(std::size_t count, unsigned seed, int secondsApart = 1) {
  std::mt19937 random(seed);
  std::vector<WireRecord> records(count);
  Millis time = ToMillis({2026, 11, 1});
  double heading = 0;
  double lat = 24e6 + 1e6 * seed;
  double lng = 6e6;
  for (WireRecord& record : records) {
    heading += static_cast<double>(random() % 200) / 1000 - 0.1;
    lat = std::clamp(lat + 108 * std::cos(heading), -45e6, 45e6);
    lng = std::clamp(lng + 160 * std::sin(heading), -107e6, 107e6);
    record = {*EncodePackedTime(time), static_cast<std::int32_t>(lat), static_cast<std::int32_t>(lng),
              static_cast<std::uint16_t>(random())};
    time += secondsApart * kSecond;
  }
  return records;
}

// Packets of 720 records of ten units in turn.
const Bytes& Stream() {
  static const Bytes stream = [] {
    std::vector<std::vector<WireRecord>> walks;
    for (std::size_t k = 0; k < kUnits; ++k)
      walks.push_back(Walk(kPoints / kUnits, static_cast<unsigned>(k)));
    Bytes bytes;
    for (std::size_t at = 0; at < kPoints / kUnits; at += kRecordsPerPacket) {
      for (std::size_t k = 0; k < kUnits; ++k) {
        const std::size_t count = std::min(kRecordsPerPacket, walks[k].size() - at);
        Append(bytes, EncodePacket(UnitId(k), std::span(walks[k]).subspan(at, count)));
      }
    }
    return bytes;
  }();
  return stream;
}

std::size_t UnitOf(std::string_view id) { return static_cast<std::size_t>(id.back() - '0') + 1; }

void Feed(PointStore& store) {
  store.Reset(kUnits);
  PacketStream stream;
  const ByteView all = Stream();
  for (std::size_t at = 0; at < all.size(); at += kArrival) {
    stream.ClearHold();
    stream.Take(all.subspan(at, std::min(kArrival, all.size() - at)));
    stream.Decode([&](std::string_view id, ByteView records) {
      store.Gather(UnitOf(id), DecodeRecords(records).rows);
    });
    store.Settle();
  }
  if (store.PointCount() != kPoints) std::abort();
}

// As a reload does it: the store has the memory that it had before. So has the rule, whose memory the library
// keeps.
void WholeStream(benchmark::State& state) {
  PointStore store;
  Feed(store);
  for (auto _ : state) {
    Feed(store);
    benchmark::DoNotOptimize(store.Newest());
  }
}
BENCHMARK(WholeStream)->Unit(benchmark::kMillisecond);

// As the first data come: the system's share, which gives the memory page by page, included.
void WholeStreamIntoNewMemory(benchmark::State& state) {
  for (auto _ : state) {
    PointStore store;
    Feed(store);
    benchmark::DoNotOptimize(store.Newest());
  }
}
BENCHMARK(WholeStreamIntoNewMemory)->Unit(benchmark::kMillisecond);

void WholeStreamByTheRule(benchmark::State& state) {
  for (auto _ : state) {
    std::vector<oracles::LiteralTrack> tracks(kUnits);
    oracles::LiteralStream(Stream(), [&](std::string_view id) { return &tracks[UnitOf(id) - 1]; });
    benchmark::DoNotOptimize(tracks.data());
  }
}
BENCHMARK(WholeStreamByTheRule)->Unit(benchmark::kMillisecond)->Iterations(1);

// What has to go through memory in any case: the bytes in, rows and miles out.
void WholeStreamMemory(benchmark::State& state) {
  std::vector<std::uint64_t> out(kPoints * 3);
  for (auto _ : state) {
    std::uint64_t sum = 0;
    for (std::size_t at = 0; at + 8 <= Stream().size(); at += 8) {
      std::uint64_t word;
      std::memcpy(&word, Stream().data() + at, 8);
      sum ^= word;
    }
    std::fill(out.begin(), out.end(), sum);
    benchmark::DoNotOptimize(out.data());
  }
}
BENCHMARK(WholeStreamMemory)->Unit(benchmark::kMillisecond);

Bytes PacketPayload() {
  const Bytes packet = EncodePacket(UnitId(0), Walk(kRecordsPerPacket, 1));
  return {packet.begin() + kPacketHeaderSize, packet.end()};
}

void CheckCode10kB(benchmark::State& state) {
  const Bytes payload = PacketPayload();
  for (auto _ : state) benchmark::DoNotOptimize(CheckCode(payload));
}
BENCHMARK(CheckCode10kB);

void Crc32Libdeflate10kB(benchmark::State& state) {
  const Bytes payload = PacketPayload();
  for (auto _ : state) benchmark::DoNotOptimize(libdeflate_crc32(0, payload.data(), payload.size()));
}
BENCHMARK(Crc32Libdeflate10kB);

void Read10kB(benchmark::State& state) {
  const Bytes payload = PacketPayload();
  for (auto _ : state) benchmark::DoNotOptimize(XorOfWords(payload.data(), payload.size()));
}
BENCHMARK(Read10kB);

void RowsFromRecords720(benchmark::State& state) {
  const Bytes payload = PacketPayload();
  std::vector<DataPoint> rows(kRecordsPerPacket);
  for (auto _ : state) {
    RowsFromRecords(ByteView(payload).subspan(kUnitIdSize), rows);
    benchmark::DoNotOptimize(rows.data());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(RowsFromRecords720);

void MemcpyRecords720(benchmark::State& state) {
  const Bytes payload = PacketPayload();
  Bytes out(payload.size());
  for (auto _ : state) {
    std::memcpy(out.data(), payload.data() + kUnitIdSize, payload.size() - kUnitIdSize);
    benchmark::DoNotOptimize(out.data());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(MemcpyRecords720);

// Both axes of a packet's rows. Each starts from a fresh copy of them.
template <typename Project>
void ProjectRows(benchmark::State& state, Project project) {
  std::vector<DataPoint> wire;
  for (const WireRecord& r : Walk(kRecordsPerPacket, 1))
    wire.push_back({r.time, r.latitude, r.longitude, r.status});
  std::vector<DataPoint> rows(wire.size());
  for (auto _ : state) {
    std::copy(wire.begin(), wire.end(), rows.begin());
    project(rows);
    benchmark::DoNotOptimize(rows.data());
    benchmark::ClobberMemory();
  }
}

void Projection(benchmark::State& state) { ProjectRows(state, ProjectPositions); }
BENCHMARK(Projection);

void ProjectionLatitudesByLibm(benchmark::State& state) {
  ProjectRows(state, [](std::span<DataPoint> rows) {
    for (DataPoint& row : rows) row.y = LatToWorldY(row.x);
  });
}
BENCHMARK(ProjectionLatitudesByLibm);

void ProjectionLatitudesByVectorMath(benchmark::State& state) { ProjectRows(state, LatitudesByVectorMath); }
BENCHMARK(ProjectionLatitudesByVectorMath);

std::vector<DataPoint> Rows(const std::vector<WireRecord>& records) {
  std::vector<DataPoint> rows;
  for (const WireRecord& r : records)
    rows.push_back({r.time, LngToWorldX(r.longitude), LatToWorldY(r.latitude), r.status});
  return rows;
}

// A batch of packets behind what is stored: a day of one report a second.
void AppendBatch(benchmark::State& state) {
  const auto stored = static_cast<std::size_t>(state.range(0));
  static const std::vector<DataPoint> all = Rows(Walk(kPoints + 86'400, 2));
  const auto rows = std::span(all).last(86'400);
  for (auto _ : state) {
    state.PauseTiming();
    {
      UnitTrack track;
      track.Merge(std::span(all).first(stored));
      state.ResumeTiming();
      for (std::size_t at = 0; at < rows.size(); at += kRecordsPerPacket)
        track.Merge(rows.subspan(at, kRecordsPerPacket));
      benchmark::DoNotOptimize(track.Miles().data());
      state.PauseTiming();
    }
    state.ResumeTiming();
  }
}
BENCHMARK(AppendBatch)->Arg(0)->Arg(kPoints)->Unit(benchmark::kMicrosecond);

// Rows of two senders in random order, as the track merges them (miles included) and as the library does.
struct Interleaved {
  std::vector<DataPoint> stored;
  std::vector<DataPoint> late;
  Interleaved() {
    std::mt19937 random(4);
    for (const DataPoint& row : Rows(Walk(200'000, 3))) (random() % 2 ? stored : late).push_back(row);
  }
};

const Interleaved& TwoSenders() {
  static const Interleaved interleaved;
  return interleaved;
}

bool Earlier(const DataPoint& a, const DataPoint& b) { return WithoutFlag(a.time) < WithoutFlag(b.time); }

void RandomInterleave(benchmark::State& state) {
  const Interleaved& rows = TwoSenders();
  UnitTrack track;
  for (auto _ : state) {
    state.PauseTiming();
    track.Clear();
    track.Merge(rows.stored);
    state.ResumeTiming();
    track.Merge(rows.late);
    benchmark::DoNotOptimize(track.Miles().data());
  }
}
BENCHMARK(RandomInterleave)->Unit(benchmark::kMicrosecond);

void RandomInterleaveSetUnion(benchmark::State& state) {
  const Interleaved& rows = TwoSenders();
  for (auto _ : state) {
    std::vector<DataPoint> out(rows.stored.size() + rows.late.size());
    out.erase(std::set_union(rows.stored.begin(), rows.stored.end(), rows.late.begin(), rows.late.end(),
                             out.begin(), Earlier),
              out.end());
    std::vector<double> miles(out.size());
    FillTravelledMiles(out, miles.data(), 0);
    benchmark::DoNotOptimize(miles.data());
  }
}
BENCHMARK(RandomInterleaveSetUnion)->Unit(benchmark::kMicrosecond);

// A late packet in a track of 1 M points, by how many points lie behind its first.
void LatePacket(benchmark::State& state) {
  static const std::vector<DataPoint> all = Rows(Walk(kPoints, 6));
  UnitTrack track;
  track.Merge(all);
  const auto rows = std::span(all).last(static_cast<std::size_t>(state.range(0))).first(kRecordsPerPacket);
  for (auto _ : state) track.Merge(rows);
}
BENCHMARK(LatePacket)->Arg(1000)->Arg(100'000)->Arg(kPoints)->Unit(benchmark::kMicrosecond);

// Packets of one unit in one batch, every one older than all before it.
void OldestLast(benchmark::State& state) {
  static const std::vector<DataPoint> rows = Rows(Walk(kPoints, 5));
  for (auto _ : state) {
    UnitTrack track;
    for (std::size_t end = rows.size(); end > 0;) {
      const std::size_t count = std::min(kRecordsPerPacket, end);
      track.Gather(std::span(rows).subspan(end -= count, count));
    }
    track.Settle();
    if (track.Points().size() != kPoints) std::abort();
  }
}
BENCHMARK(OldestLast)->Unit(benchmark::kMillisecond);

const GateRow kCheckCode({"check code, 10 kB", "CheckCode10kB", "Crc32Libdeflate10kB", 4, 8});
const GateRow kCheckRead({"check code, 10 kB", "CheckCode10kB", "Read10kB", 1 / 1.5, 1 / 1.1});
const GateRow kRecords({"record decode", "RowsFromRecords720", "MemcpyRecords720", 1 / 1.6, 1 / 1.2});
const GateRow kLibm({"projection, both axes", "Projection", "ProjectionLatitudesByLibm", 12, 20});
const GateRow kVectorMath({"projection, both axes", "Projection", "ProjectionLatitudesByVectorMath", 3, 5});
const GateRow kAppend({"a day behind 1 M points", "AppendBatch/1000000", "AppendBatch/0", 1 / 1.5, 1 / 1.2});
const GateRow kInterleave({"random interleave", "RandomInterleave", "RandomInterleaveSetUnion", 1 / 1.25, 1});
const GateRow kRule({"stream of 1 M points", "WholeStream", "WholeStreamByTheRule/iterations:1", 35, 50});
const GateRow kFloor({"stream of 1 M points", "WholeStream", "WholeStreamMemory", 1.0 / 6, 1.0 / 4});
const FigureRow kBytes(
    "bytes of a stored point",
    [] {
      PointStore store;
      Feed(store);
      std::size_t bytes = sizeof store + kUnits * sizeof(UnitTrack);
      for (std::size_t k = 1; k <= kUnits; ++k) bytes += store.Track(k).ReservedBytes();
      return static_cast<double>(bytes) / kPoints;
    },
    28);

}  // namespace
}  // namespace pallomir::bench
