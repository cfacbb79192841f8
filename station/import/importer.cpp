#include "station/import/importer.h"

#include <cassert>
#include <chrono>
#include <filesystem>

#include "base/input_file.h"
#include "base/packed_time.h"
#include "station/import/recording_formats.h"
#include "station/import/track_records.h"
#include "station/store/unit_store.h"

namespace pallomir::station {
namespace {

// Readers of recordings are told that the first part has this size.
constexpr std::size_t kPartSize = 64 * 1024;

// Imports wait for each other. One that takes longer than this has hung.
constexpr std::chrono::minutes kPatience{2};

// Every file's points. Returns an error message, or an empty text.
std::string ReadAll(const std::vector<std::string>& files, Recording& all) {
  std::vector<char> buffer(kPartSize);
  for (const std::string& file : files) {
    InputFile input(file);
    const auto nextPart = [&] { return std::string_view(buffer.data(), input.Read(buffer)); };
    const std::string problem = input.Error() ? "" : ReadRecording(nextPart, all);
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

// The description asked for, else the one there is, else the first file's name. The report says so where it
// had to be changed. Returns an error message, or an empty text.
std::string Describe(const ImportCommand& command, StoreWriter& writer, bool isDescribed,
                     std::string& report) {
  if (!command.description && isDescribed) return "";
  const std::string wanted =
      command.description.value_or(std::filesystem::path(command.files.front()).stem().string());
  const std::string clean = CleanDescription(wanted);
  if (clean != wanted) report += "  described as \"" + clean + "\", because a unit list can't hold more\n";
  return writer.SetDescription(command.unitId, clean);
}

}  // namespace

ImportOutcome Import(const ImportCommand& command, UnitStore& store, Millis today) {
  assert(!command.files.empty());
  Recording all;
  if (const auto unusable = ReadAll(command.files, all); !unusable.empty()) return {false, unusable + "\n"};
  const Millis shift = command.toToday ? ShiftToDay(all.points, today) : 0;
  const TrackRecords track = MakeRecords(std::move(all.points), shift, all.leftOut);
  if (track.records.empty()) return {false, "no point can be taken\n" + LeftOutLines(all.leftOut, 0)};

  std::string problem;
  const auto writer = store.StartWriting(kPatience, problem);
  if (!writer) return {false, problem + "\n"};
  const bool isDescribed = writer->Description(command.unitId, problem).has_value();
  if (!problem.empty()) return {false, problem + "\n"};
  const MergeOutcome merge = writer->Merge(command.unitId, track.records);
  if (!merge.error.empty()) return {false, merge.error + "\n"};
  std::string report = Report(command.unitId, merge, all.leftOut, track);
  problem = Describe(command, *writer, isDescribed, report);
  return {problem.empty(), report + problem + (problem.empty() ? "" : "\n")};
}

}  // namespace pallomir::station
