#include "station/import/gpx_reader.h"

#include <sstream>

#include "station/import/track_records.h"
#include "station/station_testing.h"

namespace pallomir::station {
namespace {

struct Reading {
  Recording track;
  std::string error;
};

Reading Read(std::string_view text, std::size_t partSize = 1 << 16, std::size_t maxPoints = kMaxTrackPoints) {
  Reading reading;
  const auto next = [&] {
    const std::string_view part = text.substr(0, partSize);
    text.remove_prefix(part.size());
    return part;
  };
  reading.error = ReadGpx(next, reading.track, maxPoints);
  return reading;
}

std::string Gpx(const std::string& points, const std::string& root = "gpx version=\"1.1\"") {
  return "<?xml version=\"1.0\"?><" + root + "><trk><trkseg>" + points + "</trkseg></trk></gpx>";
}

std::string Point(const std::string& time, const std::string& more = "") {
  return "<trkpt lat=\"40.5\" lon=\"-75.25\"><time>" + time + "</time>" + more + "</trkpt>";
}

std::string Utf16(const std::string& text) {
  std::string wide = "\xFF\xFE";
  for (const char c : text) wide += {c, '\0'};
  return wide;
}

std::string NumberText(std::optional<double> number) {
  std::ostringstream text;
  number ? text << *number : text << '-';
  return text.str();
}

TEST(GpxTime, ReadsWhatDevicesWrite) {
  const std::pair<const char*, Millis> cases[] = {
      // milliseconds after noon
      {"2026-11-22T12:00:00Z", 0},      {"2026-11-22t12:00:00z", 0},
      {"2026-11-22 12:00:00", 0},       {"2026-11-22T12:00:00.5Z", 500},
      {"2026-11-22T12:00:00,25Z", 250}, {"2026-11-22T12:00:00.123456789Z", 123},
      {"2026-11-22T14:00:00+02:00", 0}, {"2026-11-22T14:00:00+0200", 0},
      {"2026-11-22T07:30:00-04:30", 0}, {"2026-11-22T14:00:00.75+02", 750},
      {"2026-11-23T01:00:00+13:00", 0},
  };
  for (const auto& [text, after] : cases) EXPECT_EQ(ParseGpxTime(text), kNoon + after) << text;
  for (const char* text : {"", "noon", "2026-11-22", "2026-11-22T12:00Z", "2026-11-22T12:00:00.Z",
                           "2026-11-22T12:00:00+", "2026-11-22T12:00:00+2", "2026-11-22T12:00:00+02:00x",
                           "2026-11-22T12:00:00 GMT", "2026-02-29T12:00:00Z", "2026-11-22T24:00:00Z",
                           "2026-11-22T12:00:60Z", "26-11-22T12:00:00Z", "2026-11-22T-1:00:00Z"})
    EXPECT_FALSE(ParseGpxTime(text)) << text;
}

TEST(GpxReader, FindsSpeedAndCourseWhereverTheyAre) {
  const std::string noon = "2026-11-22T12:00:00Z";
  const auto at = [&](const std::string& more) { return Gpx(Point(noon, more)); };
  const struct {
    const char* name;
    std::string gpx;
    const char* read;  // speed and course
  } cases[] = {
      {"1.0", Gpx(Point(noon, "<speed>12.5</speed><course>350</course>"), "gpx version=\"1.0\""), "12.5 350"},
      {"none", Gpx(Point("\n " + noon + "\t ")), "- -"},
      {"extension",
       at("<extensions><x:TPX><x:speed> 3.5 </x:speed><x:course>7</x:course></x:TPX></extensions>"), "3.5 7"},
      {"prefixed root",
       "<g:gpx><g:trk><g:trkseg><g:trkpt lat='40.5' lon='-75.25'><g:time>" + noon +
           "</g:time><g:speed>1</g:speed></g:trkpt></g:trkseg></g:trk></g:gpx>",
       "1 -"},
      {"its own before the extensions'",
       at("<extensions><speed>4</speed></extensions><speed>5</speed><speed>6</speed>"), "5 -"},
      {"elsewhere in the point", at("<link><speed>4</speed></link><ele>5</ele>"), "- -"},
      {"in an element of the number", at("<speed><b>4</b></speed><course>7<b>8</b></course>"), "- 7"},
      {"parts of a text", at("<speed> 1<!-- -->2<![CDATA[.5]]>&#x32; </speed>"), "12.52 -"},
      {"longer than a number", at("<speed>1" + std::string(100, '0') + "</speed>"), "- -"},
      {"blanks", at("<speed>" + std::string(100, ' ') + "3" + std::string(100, '\n') + "</speed>"), "3 -"},
      {"any encoding", Gpx("<name>\xE4\x80\xFF</name>" + Point(noon, "<n\xC3\xA4me/><speed>3</speed>")),
       "3 -"},
      {"another declared",
       "\xEF\xBB\xBF<?xml version='1.0' encoding='windows-1251'?>" + at("<name>\xE4</name>").substr(21),
       "- -"},
      {"UTF-16", Utf16(at("<speed>3</speed>")), "3 -"},
      {"UTF-16 without a mark", Utf16(at("<speed>3</speed>")).substr(2), "3 -"},
      {"unknown speed", at("<speed>-1</speed><course>-90</course>"), "- 270"},
      {"no numbers", at("<speed>fast</speed><course>nan</course>"), "- -"},
  };
  for (const auto& c : cases) {
    for (const std::size_t partSize : {1, 2, 7, 1 << 16}) {
      const auto [track, error] = Read(c.gpx, partSize);
      ASSERT_EQ(error, "") << c.name;
      ASSERT_EQ(track.points.size(), 1u) << c.name;
      const TrackPoint& point = track.points[0];
      EXPECT_EQ(point.utc, kNoon) << c.name;
      EXPECT_EQ(point.place.longitude, -75.25) << c.name;
      EXPECT_EQ(NumberText(point.speed) + " " + NumberText(point.course), c.read) << c.name;
    }
  }
}

TEST(GpxReader, CountsWhatItLeavesOut) {
  std::string points =
      "<trkpt lat='1' lon='2'></trkpt><trkpt lat='1' lon='2'><time/></trkpt>"
      "<trkpt lat='1' lon='2'><time>yesterday</time></trkpt>"
      "<trkpt lat='1' lon='2'><time>2026-11-22T12:1/:00Z</time></trkpt>"
      "<trkpt lat='1' lon='2'><time>2026-11-22T1200:00Z</time></trkpt>";
  for (const char* place :
       {"lat='90.1' lon='2'", "lat='1' lon='-180.5'", "lat='x' lon='2'", "lat='1'", "lat='-90' lon='180'"})
    points += std::string("<trkpt ") + place + "><time>2026-11-22T12:00:00Z</time></trkpt>";
  const auto [track, error] = Read(Gpx(points));
  EXPECT_EQ(track.leftOut.withoutTime, 2u);
  EXPECT_EQ(track.leftOut.unreadableTime, 3u);
  EXPECT_EQ(track.leftOut.impossiblePosition, 4u);
  EXPECT_EQ(track.points.size(), 1u);
}

TEST(GpxReader, SaysWhyAFileIsNone) {
  const std::string point = Point("2026-11-22T12:00:00Z");
  const auto many = [](const std::string& text, int count) {
    std::string all;
    while (count-- > 0) all += text;
    return all;
  };
  std::string names;
  for (int i = 0; i < 100'000; ++i) names += "<a" + std::to_string(i) + "/>";
  const std::pair<std::string, std::string> cases[] = {
      // mentions nothing: it is one
      {"", "is not XML"},
      {"<", "is not XML"},
      {"plain text", "is not XML"},
      {"<gpx>\n<trk>\n<trkseg></gpx>", "in line 3"},
      {Gpx(point).substr(0, 140), "is not XML"},
      {"<html><body/></html>", "<html>"},
      {"<gpx/>", ""},
      {Gpx(point) + "\n<!-- by a device -->\n", ""},
      {Gpx(point) + "\n" + Gpx(point), "behind its end in line 2"},
      {Gpx(point) + Gpx(point).substr(21), "behind its end"},
      {Gpx(point) + "more", "behind its end"},
      {"<!DOCTYPE gpx SYSTEM 'gpx.dtd'>" + Gpx(point).substr(21), ""},
      {"<!DOCTYPE gpx [<!ENTITY a 'b'>]>" + Gpx(point).substr(21), "declarations"},
      // These would fill any memory.
      {Gpx(point + "<extensions>" + many("<a>", 200'000)), "too deep"},
      {Gpx(names), "names"},
      {Gpx("<a b='" + std::string(10'000'000, 'x') + "'/>"), "too long"},
      {Gpx("<time>" + std::string(10'000'000, 'x') + "</time>" + many("<a/>", 1'000'000)), ""},
  };
  for (const auto& [text, mentions] : cases) {
    const std::string error = Read(text).error;
    EXPECT_EQ(error.empty(), mentions.empty()) << text.substr(0, 100) << " " << error;
    EXPECT_NE(error.find(mentions), std::string::npos) << text.substr(0, 100) << " " << error;
  }
}

TEST(GpxReader, TakesSoManyPointsAndNoMore) {
  const std::string two = Gpx(Point("2026-11-22T12:00:00Z") + Point("2026-11-22T12:00:01Z") + Point("?"));
  EXPECT_EQ(Read(two, 100, 2).error, "");
  const auto [track, error] = Read(two, 100, 1);
  EXPECT_NE(error.find("takes 1 at most"), std::string::npos) << error;
  EXPECT_EQ(track.points.size(), 1u);
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
  std::string seconds;
  for (const WireRecord& record : track.records)
    seconds += std::to_string(DecodePackedTime(record.time).value_or(0) - kNoon) + " ";
  EXPECT_EQ(seconds, "0 2000 5000 6000 ");
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
