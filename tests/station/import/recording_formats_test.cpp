#include "station/import/recording_formats.h"

#include <gtest/gtest.h>

namespace pallomir::station {
namespace {

// A form that begins with '#' and has a point in each character behind it.
constexpr RecordingFormat kMarks = {
    [](std::string_view head) { return head.starts_with('#'); },
    [](const NextPart& nextPart, Recording& recording, std::size_t maxPoints) -> std::string {
      std::size_t size = 0;
      for (std::string_view part = nextPart(); !part.empty(); part = nextPart()) size += part.size();
      recording.points.resize(recording.points.size() + size - 1);
      return recording.points.size() > maxPoints ? "has too many points" : "";
    }};

TEST(RecordingFormats, AreChosenByTheContent) {
  const RecordingFormat formats[] = {kMarks, RecordingFormats().back()};
  const std::string gpx =
      "<gpx><trk><trkseg><trkpt lat='1' "
      "lon='2'><time>2026-11-22T12:00:00Z</time></trkpt></trkseg></trk></gpx>";
  const struct {
    std::string content;
    std::size_t points;
    std::string mentions;
  } cases[] = {
      {"#", 0, ""}, {"#1234", 4, ""},          {"#12345", 5, "too many"},
      {gpx, 1, ""}, {"1234", 0, "is not XML"}, {"", 0, "is not XML"},
  };
  for (const auto& c : cases) {
    for (const std::size_t partSize : {1u, 3u, 1000u}) {
      std::string_view rest = c.content;
      const auto nextPart = [&] {
        const std::string_view part = rest.substr(0, partSize);
        rest.remove_prefix(part.size());
        return part;
      };
      Recording recording;
      const std::string problem = ReadRecording(nextPart, recording, 4, formats);
      EXPECT_EQ(recording.points.size(), c.points) << c.content;
      EXPECT_EQ(problem.empty(), c.mentions.empty()) << c.content << ": " << problem;
      EXPECT_NE(problem.find(c.mentions), std::string::npos) << c.content << ": " << problem;
    }
  }
}

}  // namespace
}  // namespace pallomir::station
