#include "station/importer.h"

#include "base/packed_time.h"
#include "base/whole_file.h"
#include "station/data_writer.h"
#include "station/track_records.h"
#include "station/unit_descriptions.h"

namespace pallomir::station {
namespace {

// Some two million points. A tree of a longer text would not fit into the memory of a small computer.
constexpr std::size_t kMaxGpxSize = 200 * 1000 * 1000;

void Add(LeftOut& sum, const LeftOut& more) {
  sum.withoutTime += more.withoutTime;
  sum.unreadableTime += more.unreadableTime;
  sum.impossiblePosition += more.impossiblePosition;
}

// Every file's points with segment numbers of their own. An error message, or nothing.
std::string ReadAll(const std::vector<std::string>& files, GpxTrack& all) {
  for (const std::string& file : files) {
    std::error_code error;
    const auto text = ReadWholeFile(file, kMaxGpxSize, error);
    if (!text) return file + " can't be read: " + error.message();
    GpxTrack track = ReadGpx(*text);
    if (!track.error.empty()) return file + " " + track.error;
    const int segments = all.points.empty() ? 0 : all.points.back().segment;
    for (TrackPoint& point : track.points) point.segment += segments;
    all.points.insert(all.points.end(), track.points.begin(), track.points.end());
    Add(all.leftOut, track.leftOut);
  }
  return "";
}

std::string CountLine(std::size_t count, std::string_view what) {
  return count == 0 ? "" : "  " + std::to_string(count) + " " + std::string(what) + "\n";
}

std::string LeftOutLines(const LeftOut& leftOut, std::size_t alreadyThere) {
  return CountLine(leftOut.withoutTime, "without a time") +
         CountLine(leftOut.unreadableTime, "with a time that can't be read") +
         CountLine(leftOut.impossiblePosition, "without a possible position") +
         CountLine(leftOut.yearOutOfRange, "outside the years 2000 to 2031") +
         CountLine(leftOut.sameSecond, "in the same second as another point") +
         CountLine(alreadyThere, "at a time that the unit already has");
}

std::string Span(const std::vector<WireRecord>& records) {
  const auto text = [](const WireRecord& record) {
    return IsoText(DecodePackedTime(record.time).value_or(0));
  };
  return text(records.front()) + " to " + text(records.back()) + " UTC";
}

std::string Report(const std::string& unitId, const MergeOutcome& merge, const LeftOut& leftOut,
                   const TrackRecords& track) {
  std::string text = unitId + ": " + std::to_string(merge.added) + " points taken, " +
                     std::to_string(leftOut.Total() + merge.alreadyThere) + " left out\n" +
                     LeftOutLines(leftOut, merge.alreadyThere);
  if (track.outOfOrder > 0) text += "  " + std::to_string(track.outOfOrder) + " were put in order\n";
  text += "  from " + Span(track.records) + "\n";
  for (const std::string& problem : merge.problems) text += "  left alone: " + problem + "\n";
  return text;
}

// The one asked for, else the one there is, else the first file's name. Says so where it had to be changed.
std::string Describe(const ImportCommand& command, const std::filesystem::path& dataFolder,
                     std::string& report) {
  if (!command.description && ReadDescriptions(dataFolder).contains(command.unitId)) return "";
  const std::string wanted =
      command.description.value_or(std::filesystem::path(command.files.front()).stem().string());
  const std::string clean = CleanDescription(wanted);
  if (clean != wanted) report += "  described as \"" + clean + "\", because a unit list can't hold more\n";
  return WriteDescription(dataFolder, command.unitId, clean);
}

}  // namespace

ImportOutcome Import(const ImportCommand& command, const std::filesystem::path& dataFolder, Millis today) {
  GpxTrack all;
  if (const auto problem = ReadAll(command.files, all); !problem.empty()) return {kFailed, problem + "\n"};
  const Millis shift = command.toToday ? ShiftToDay(all.points, today) : 0;
  const TrackRecords track = MakeRecords(std::move(all.points), shift, all.leftOut);
  if (track.records.empty()) return {kFailed, "no point can be taken\n" + LeftOutLines(all.leftOut, 0)};

  const MergeOutcome merge = MergeIntoUnit(dataFolder, command.unitId, track.records);
  if (!merge.error.empty()) return {kFailed, merge.error + "\n"};
  std::string report = Report(command.unitId, merge, all.leftOut, track);
  if (const auto problem = Describe(command, dataFolder, report); !problem.empty())
    return {kFailed, report + problem + "\n"};
  return {kDone, report};
}

}  // namespace pallomir::station
