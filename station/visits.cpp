#include "station/visits.h"

#include <algorithm>
#include <limits>
#include <numbers>
#include <variant>

#include "base/whole_file.h"
#include "reports/record_time.h"
#include "reports/visit_search.h"
#include "station/common/geo.h"
#include "station/import/gpx_reader.h"
#include "zones/zone_file.h"

namespace pallomir::station {
namespace {

constexpr double kMetersPerDegree = kEarthRadius * std::numbers::pi / 180;

using AreaOrComplaint = std::variant<SearchArea, std::string>;

AreaOrComplaint AreaOfZone(const VisitsCommand& command) {
  std::error_code error;
  const auto text = ReadWholeFile(command.zones, kMaxZoneFileSize, error);
  if (!text) return command.zones.string() + " can't be read: " + error.message();
  const ZoneFileContent content = ReadZones(*text);
  if (content.damage)
    return command.zones.string() + ": line " + std::to_string(content.damage->line) + " " +
           content.damage->what;
  if (content.illegalDepth) return command.zones.string() + " nests zones deeper than they are";
  const auto zone = content.tree.WithSection(command.zone);
  if (!zone) return command.zones.string() + " has no zone " + command.zone;
  return SearchArea::OfZone(content.tree, *zone);
}

AreaOrComplaint AreaOf(const VisitsCommand& command) {
  if (const auto& box = command.box)
    return SearchArea::Rectangle(box->minLat, box->maxLat, box->minLng, box->maxLng);
  if (!command.at) return AreaOfZone(command);
  const double halfHeight = command.radius ? *command.radius / kMetersPerDegree : HalfHeightAt(command.zoom);
  return SearchArea::Around(command.at->latitude, command.at->longitude, halfHeight);
}

// Without repetitions, in the order they are given.
std::string UnitsOf(const VisitsCommand& command, UnitStore& store, std::vector<std::string>& unitIds) {
  for (const std::string& id : command.unitIds)
    if (std::ranges::find(unitIds, id) == unitIds.end()) unitIds.push_back(id);
  std::string problem;
  if (unitIds.empty()) unitIds = store.UnitsToSearch(problem);
  return problem;
}

TimeSpan SpanOfCommand(const VisitsCommand& command) {
  const TimeSpan all;
  const TimeSpan span = SpanOf(command.from.value_or(std::numeric_limits<Millis>::min()),
                               command.until.value_or(std::numeric_limits<Millis>::max()));
  if (span.last < span.first) return span;
  return {command.from ? span.first : all.first, command.until ? span.last : all.last};
}

std::string Iso8601(std::uint32_t packed) {
  std::string text = IsoText(MomentOf(packed)) + "Z";
  text[text.find(' ')] = 'T';
  return text;
}

}  // namespace

VisitsOutcome FindVisits(const VisitsCommand& command, UnitStore& store, const EndOfSearch& end) {
  VisitQuery query;
  if (const std::string problem = UnitsOf(command, store, query.unitIds); !problem.empty())
    return {false, "", problem + "\n", 0, 0};
  AreaOrComplaint area = AreaOf(command);
  if (const auto* complaint = std::get_if<std::string>(&area)) return {false, "", *complaint + "\n", 0, 0};
  query.area = std::get<SearchArea>(std::move(area));
  query.span = SpanOfCommand(command);
  query.limit = command.limit;
  const auto search = store.SearchVisits(std::move(query));
  std::string ended;
  while (ended.empty() && search->Step())
    if (end) ended = end();
  const auto& units = search->Query().unitIds;
  const std::vector<Visit> visits = search->Visits();
  const std::string& problem = ended.empty() ? search->Problem() : ended;
  VisitsOutcome outcome{problem.empty(), "", "", search->State().records, search->State().files};
  outcome.list = command.asJson ? VisitsAsJson(visits, units) : VisitsAsCsv(visits, units);
  if (!outcome.isDone) outcome.complaint = problem + "\n";
  return outcome;
}

std::optional<Millis> ParseMoment(const std::string& text, bool isEnd) {
  constexpr std::size_t kDaySize = std::string_view("2026-11-22").size();
  if (text.size() != kDaySize) return ParseGpxTime(text);
  return ParseGpxTime(text + (isEnd ? " 23:59:59" : " 00:00:00"));
}

std::string VisitsAsCsv(std::span<const Visit> visits, std::span<const std::string> unitIds) {
  std::string text = "unit,entry,exit,records\n";
  for (const Visit& visit : visits)
    text += unitIds[visit.unit] + "," + Iso8601(visit.entry) + "," + Iso8601(visit.exit) + "," +
            std::to_string(visit.records) + "\n";
  return text;
}

std::string VisitsAsJson(std::span<const Visit> visits, std::span<const std::string> unitIds) {
  std::string text = "[";
  for (const Visit& visit : visits) {
    text += text.size() == 1 ? "\n" : ",\n";
    text += R"({"unit":")" + unitIds[visit.unit] + R"(","entry":")" + Iso8601(visit.entry) + R"(","exit":")" +
            Iso8601(visit.exit) + R"(","records":)" + std::to_string(visit.records) + "}";
  }
  return text + "\n]\n";
}

}  // namespace pallomir::station
