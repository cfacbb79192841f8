#include "station/gpx_reader.h"

#include "station/track_records.h"
#include "station_testing.h"

namespace pallomir::station {
namespace {

std::string Gpx(const std::string& points, const std::string& root = "gpx version=\"1.1\"") {
  return "<?xml version=\"1.0\"?><" + root + "><trk><trkseg>" + points + "</trkseg></trk></gpx>";
}

std::string Point(const std::string& time, const std::string& more = "") {
  return "<trkpt lat=\"40.5\" lon=\"-75.25\"><time>" + time + "</time>" + more + "</trkpt>";
}

TEST(GpxTime, ReadsWhatDevicesWrite) {
  const struct {
    const char* text;
    Millis millisecondsAfterNoon;
  } cases[] = {
      {"2026-11-22T12:00:00Z", 0},
      {"2026-11-22t12:00:00z", 0},
      {"2026-11-22 12:00:00", 0},
      {"2026-11-22T12:00:00.5Z", 500},
      {"2026-11-22T12:00:00.123456789Z", 123},
      {"2026-11-22T12:00:00,25Z", 250},
      {"2026-11-22T14:00:00+02:00", 0},
      {"2026-11-22T14:00:00+0200", 0},
      {"2026-11-22T14:00:00.75+02", 750},
      {"2026-11-22T07:30:00-04:30", 0},
      {"2026-11-23T01:00:00+13:00", 0},
  };
  for (const auto& c : cases) {
    const auto time = ParseGpxTime(c.text);
    ASSERT_TRUE(time) << c.text;
    EXPECT_EQ(*time - kNoon, c.millisecondsAfterNoon) << c.text;
  }
  const char* const unreadable[] = {"",
                                    "noon",
                                    "2026-11-22",
                                    "2026-11-22T12:00Z",
                                    "2026-11-22T12:00:00.Z",
                                    "2026-11-22T12:00:00+",
                                    "2026-11-22T12:00:00+2",
                                    "2026-11-22T12:00:00+02:00x",
                                    "2026-11-22T12:00:00 GMT",
                                    "2026-02-29T12:00:00Z",
                                    "2026-11-22T24:00:00Z",
                                    "2026-11-22T12:00:60Z",
                                    "26-11-22T12:00:00Z",
                                    "2026-11-22T-1:00:00Z"};
  for (const char* text : unreadable) EXPECT_FALSE(ParseGpxTime(text)) << text;
}

TEST(GpxReader, FindsSpeedAndCourseWhereverTheyAre) {
  const std::string noon = "2026-11-22T12:00:00Z";
  const struct {
    const char* name;
    std::string gpx;
    std::optional<double> speed, course;
  } cases[] = {
      {"1.0", Gpx(Point(noon, "<speed>12.5</speed><course>350</course>"), "gpx version=\"1.0\""), 12.5, 350},
      {"none", Gpx(Point(noon)), {}, {}},
      {"extension",
       Gpx(Point(noon,
                 "<extensions><x:TPX><x:speed> 3.5 </x:speed><x:course>7</x:course></x:TPX></extensions>")),
       3.5, 7},
      {"extension without a prefix", Gpx(Point(noon, "<extensions><speed>4</speed></extensions>")), 4, {}},
      {"prefixed root",
       "<g:gpx><g:trk><g:trkseg><g:trkpt lat='40.5' lon='-75.25'><g:time>" + noon +
           "</g:time><g:speed>1</g:speed></g:trkpt></g:trkseg></g:trk></g:gpx>",
       1,
       {}},
      {"unknown speed", Gpx(Point(noon, "<speed>-1</speed><course>-90</course>")), {}, 270},
      {"no numbers", Gpx(Point(noon, "<speed>fast</speed><course>nan</course>")), {}, {}},
  };
  for (const auto& c : cases) {
    const GpxTrack track = ReadGpx(c.gpx);
    ASSERT_EQ(track.error, "") << c.name;
    ASSERT_EQ(track.points.size(), 1u) << c.name;
    EXPECT_EQ(track.points[0].utc, kNoon) << c.name;
    EXPECT_EQ(track.points[0].place.longitude, -75.25) << c.name;
    EXPECT_EQ(track.points[0].speed, c.speed) << c.name;
    EXPECT_EQ(track.points[0].course, c.course) << c.name;
  }
}

TEST(GpxReader, CountsWhatItLeavesOut) {
  const std::string time = "<time>2026-11-22T12:00:00Z</time>";
  const GpxTrack track =
      ReadGpx(Gpx("<trkpt lat='1' lon='2'></trkpt>"
                  "<trkpt lat='1' lon='2'><time/></trkpt>"
                  "<trkpt lat='1' lon='2'><time>yesterday</time></trkpt>"
                  "<trkpt lat='90.1' lon='2'>" +
                  time +
                  "</trkpt>"
                  "<trkpt lat='1' lon='-180.5'>" +
                  time +
                  "</trkpt>"
                  "<trkpt lat='x' lon='2'>" +
                  time +
                  "</trkpt>"
                  "<trkpt lat='1'>" +
                  time +
                  "</trkpt>"
                  "<trkpt lat='-90' lon='180'>" +
                  time + "</trkpt>"));
  EXPECT_EQ(track.leftOut.withoutTime, 2u);
  EXPECT_EQ(track.leftOut.unreadableTime, 1u);
  EXPECT_EQ(track.leftOut.impossiblePosition, 4u);
  EXPECT_EQ(track.points.size(), 1u);
}

TEST(GpxReader, SaysWhyAFileIsNone) {
  EXPECT_NE(ReadGpx("").error.find("is not XML"), std::string::npos);
  EXPECT_NE(ReadGpx("plain text").error.find("is not XML"), std::string::npos);
  EXPECT_NE(ReadGpx("<gpx>\n<trk>\n<trkseg></gpx>").error.find("in line 3"), std::string::npos);
  EXPECT_NE(ReadGpx("<html><body/></html>").error.find("<html>"), std::string::npos);
  EXPECT_EQ(ReadGpx("<gpx/>").error, "");
  std::string deep = "<gpx><trk><trkseg>" + Point("2026-11-22T12:00:00Z", "<extensions>");
  for (int i = 0; i < 200000; ++i) deep += "<a>";
  EXPECT_NE(ReadGpx(deep).error, "") << "and does not run out of stack";
}

TEST(TrackRecords, PutsTimesRight) {
  const auto point = [](Millis utc) { return TrackPoint{utc, {40, -75}, 1.0, 90.0, 1}; };
  LeftOut leftOut;
  const TrackRecords track = MakeRecords(
      {point(kNoon + 5 * kSecond), point(kNoon), point(kNoon + 400), point(kNoon + 1999),
       point(kNoon + 6 * kSecond), point(ToMillis({1999, 12, 31})), point(ToMillis({2032, 1, 1}))},
      0, leftOut);
  EXPECT_EQ(leftOut.sameSecond, 1u);
  EXPECT_EQ(leftOut.yearOutOfRange, 2u);
  EXPECT_EQ(track.outOfOrder, 1u);
  std::vector<std::uint32_t> times;
  for (const WireRecord& record : track.records) times.push_back(record.time);
  EXPECT_EQ(times, (std::vector<std::uint32_t>{RecordAt(0).time, RecordAt(2).time, RecordAt(5).time,
                                               RecordAt(6).time}));
}

TEST(TrackRecords, WorksOutSpeedAndHeading) {
  // East along a parallel, 10 m/s = 22.37 mph = 64.8 steps; then a pause in the recording.
  std::vector<TrackPoint> points;
  for (int i = 0; i < 5; ++i)
    points.push_back({kNoon + i * 2 * kSecond, Moved({40, -75}, 20.0 * i, 0), {}, {}, 1});
  points.push_back({kNoon + kHour, {41, -75}, {}, {}, 2});
  LeftOut leftOut;
  const TrackRecords track = MakeRecords(points, 0, leftOut);
  ASSERT_EQ(track.records.size(), 6u);
  for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(track.records[i].status, 4 << 12 | 65) << i;
  EXPECT_EQ(track.records[5].status & 0x1FF, 0) << "a pause is no journey";

  points[2].speed = 1000;  // more than a status word holds
  points[2].course = 359;
  EXPECT_EQ(MakeRecords(points, 0, leftOut).records[2].status, 0x1FF);
}

TEST(TrackRecords, MovesTheLastDayToToday) {
  const Millis today = ToMillis({2026, 11, 22});
  const std::vector<TrackPoint> points = {{ToMillis({2014, 3, 1, 23, 59, 0}), {}, {}, {}, 1},
                                          {ToMillis({2014, 3, 2, 0, 1, 0}), {}, {}, {}, 1},
                                          {ToMillis({2099, 1, 1}), {}, {}, {}, 1}};  // a device's slip
  LeftOut leftOut;
  const auto records = MakeRecords(points, ShiftToDay(points, today), leftOut).records;
  ASSERT_EQ(records.size(), 2u);
  EXPECT_EQ(DecodePackedTime(records[0].time), ToMillis({2026, 11, 21, 23, 59, 0}));
  EXPECT_EQ(DecodePackedTime(records[1].time), ToMillis({2026, 11, 22, 0, 1, 0}));
}

}  // namespace
}  // namespace pallomir::station
