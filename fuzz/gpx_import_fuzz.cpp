#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "base/packed_time.h"
#include "fuzz_input.h"
#include "station/import/gpx_reader.h"
#include "station/import/track_records.h"
#include "station/store/data_files.h"

// A recording from anywhere: what comes of it are records that a data file can hold.

namespace pallomir::fuzz {
namespace {

std::pair<station::Recording, std::string> Read(std::string_view text, std::size_t partSize) {
  station::Recording track;
  std::string error = station::ReadGpx(
      [&] {
        const std::string_view part = text.substr(0, partSize);
        text.remove_prefix(part.size());
        return part;
      },
      track, station::kMaxTrackPoints);
  return {std::move(track), std::move(error)};
}

}  // namespace
}  // namespace pallomir::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace pallomir;
  const std::string_view text = AsText({data, size});
  station::ParseGpxTime(text);
  const auto [track, error] = fuzz::Read(text, text.size());
  // However it is cut into parts, it is the same recording.
  const auto [again, sameError] = fuzz::Read(text, size % 13 + 1);
  PALLOMIR_DEMAND(error == sameError && track.leftOut.Total() == again.leftOut.Total());
  PALLOMIR_DEMAND(std::ranges::equal(track.points, again.points, {}, &station::TrackPoint::utc,
                                     &station::TrackPoint::utc));
  for (const station::TrackPoint& point : track.points) {
    PALLOMIR_DEMAND(std::fabs(point.place.latitude) <= 90 && std::fabs(point.place.longitude) <= 180);
    PALLOMIR_DEMAND(!point.speed || *point.speed >= 0);
    PALLOMIR_DEMAND(!point.course || (*point.course >= 0 && *point.course <= 360));
  }
  const Millis today = ToMillis({2026, 11, 22});
  for (const Millis shift : {Millis{0}, station::ShiftToDay(track.points, today)}) {
    station::LeftOut leftOut;
    const auto made = station::MakeRecords(track.points, shift, leftOut);
    PALLOMIR_DEMAND(made.records.size() + leftOut.Total() == track.points.size());
    for (std::size_t at = 0; at < made.records.size(); at += kRecordsPerPacket) {
      const auto chunk =
          std::span(made.records).subspan(at, std::min(kRecordsPerPacket, made.records.size() - at));
      const auto read = station::DecodeDataFile(station::EncodeDataFile(chunk));
      PALLOMIR_DEMAND(read.problem.empty());
      PALLOMIR_DEMAND(std::ranges::equal(read.records, chunk));
    }
    for (const WireRecord& record : made.records)
      PALLOMIR_DEMAND(std::abs(record.latitude) <= 54'000'000 && std::abs(record.longitude) <= 108'000'000);
  }
  return 0;
}
