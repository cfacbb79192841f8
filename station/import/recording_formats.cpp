#include "station/import/recording_formats.h"

#include <algorithm>
#include <cassert>

#include "station/import/gpx_reader.h"

namespace pallomir::station {
namespace {

// GPX has no mark at its start: comments of any length may come before the element that tells it.
bool RecognisesAnything(std::string_view) { return true; }

constexpr RecordingFormat kFormats[] = {
    {RecognisesAnything, ReadGpx},
};

}  // namespace

std::span<const RecordingFormat> RecordingFormats() { return kFormats; }

std::string ReadRecording(const NextPart& nextPart, Recording& recording, std::size_t maxPoints,
                          std::span<const RecordingFormat> formats) {
  assert(!formats.empty());
  const std::string_view head = nextPart();
  const auto known =
      std::ranges::find_if(formats, [head](const auto& each) { return each.recognises(head); });
  const RecordingFormat& format = known == formats.end() ? formats.back() : *known;
  bool isHeadTaken = false;
  const auto fromHead = [&] {
    if (isHeadTaken) return nextPart();
    isHeadTaken = true;
    return head;
  };
  return format.read(fromHead, recording, maxPoints);
}

}  // namespace pallomir::station
