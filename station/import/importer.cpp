#include "station/import/importer.h"

#include <chrono>

#include "base/input_file.h"
#include "base/packed_time.h"
#include "station/import/track_records.h"
#include "station/store/data_writer.h"
#include "station/store/import_lock.h"
#include "station/store/unit_descriptions.h"

namespace pallomir::station {
namespace {

constexpr std::size_t kPartSize = 64 * 1024;

// Imports of the same moment wait for each other. One that takes longer than this hangs.
constexpr std::chrono::minutes kPatience{2};

// Every file's points. An error message, or nothing.
std::string ReadAll(const std::vector<std::string>& files, GpxTrack& all) {
  std::vector<char> buffer(kPartSize);
  for (const std::string& file : files) {
    InputFile input(file);
    const auto nextPart = [&] { return std::string_view(buffer.data(), input.Read(buffer)); };
    const std::string problem = input.Error() ? "" : ReadGpx(nextPart, all);
    if (input.Error()) return file + " can't be read: " + input.Error().message();
    if (!problem.empty()) return file + " " + problem;
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
std::string Describe(const ImportCommand& command, const ImportLock& lock, bool isDescribed,
                     std::string& report) {
  if (!command.description && isDescribed) return "";
  const std::string wanted =
      command.description.value_or(std::filesystem::path(command.files.front()).stem().string());
  const std::string clean = CleanDescription(wanted);
  if (clean != wanted) report += "  described as \"" + clean + "\", because a unit list can't hold more\n";
  return WriteDescription(lock, command.unitId, clean);
}

}  // namespace

ImportOutcome Import(const ImportCommand& command, const std::filesystem::path& dataFolder, Millis today) {
  GpxTrack all;
  if (const auto unusable = ReadAll(command.files, all); !unusable.empty()) return {kFailed, unusable + "\n"};
  const Millis shift = command.toToday ? ShiftToDay(all.points, today) : 0;
  const TrackRecords track = MakeRecords(std::move(all.points), shift, all.leftOut);
  if (track.records.empty()) return {kFailed, "no point can be taken\n" + LeftOutLines(all.leftOut, 0)};

  const ImportLock lock(dataFolder, kPatience);
  if (!lock.Problem().empty()) return {kFailed, lock.Problem() + "\n"};
  std::string problem;
  const bool isDescribed = ReadDescriptions(dataFolder, problem).contains(command.unitId);
  if (!problem.empty()) return {kFailed, problem + "\n"};
  const MergeOutcome merge = MergeIntoUnit(lock, command.unitId, track.records);
  if (!merge.error.empty()) return {kFailed, merge.error + "\n"};
  std::string report = Report(command.unitId, merge, all.leftOut, track);
  problem = Describe(command, lock, isDescribed, report);
  return {problem.empty() ? kDone : kFailed, report + problem + (problem.empty() ? "" : "\n")};
}

}  // namespace pallomir::station
