#include "reports/visits_answer.h"

#include <algorithm>
#include <array>
#include <limits>
#include <nlohmann/json.hpp>
#include <optional>

#include "base/number_format.h"
#include "reports/visit_search.h"
#include "reports/visit_text.h"

namespace pallomir {
namespace {

using Json = nlohmann::json;

constexpr std::size_t kMostProblem = 2000;  // characters
constexpr int kDeepest = 8;                 // of what is nested
constexpr int kNearestZoom = 22;

// "2026-11-22T15:04:05Z", to the letter.
std::optional<std::uint32_t> PackedOf(const std::string& text) {
  constexpr std::string_view kForm = "dddd-dd-ddTdd:dd:ddZ";
  if (text.size() != kForm.size()) return std::nullopt;
  std::array<int, 6> fields{};
  std::size_t field = 0;
  for (std::size_t i = 0; i < kForm.size(); ++i) {
    const char c = text[i];
    if (kForm[i] == 'd') {
      if (c < '0' || c > '9') return std::nullopt;
      fields[field] = fields[field] * 10 + (c - '0');
    } else {
      if (c != kForm[i]) return std::nullopt;
      ++field;
    }
  }
  const CivilTime time{fields[0], fields[1], fields[2], fields[3], fields[4], fields[5]};
  return IsPossible(time) ? EncodePackedTime(ToMillis(time)) : std::nullopt;
}

std::string TextOf(const Json& object, const char* name) {
  const auto found = object.find(name);
  return found != object.end() && found->is_string() ? found->get<std::string>() : std::string();
}

std::uint64_t CountOf(const Json& object, const char* name) {
  const auto found = object.find(name);
  return found != object.end() && found->is_number_unsigned() ? found->get<std::uint64_t>() : 0;
}

std::optional<ToldVisit> VisitOf(const Json& object) {
  if (!object.is_object()) return std::nullopt;
  const auto entry = PackedOf(TextOf(object, "entry")), exit = PackedOf(TextOf(object, "exit"));
  const std::uint64_t records = CountOf(object, "records");
  if (!entry || !exit || *exit < *entry || records > std::numeric_limits<std::uint32_t>::max())
    return std::nullopt;
  return ToldVisit{TextOf(object, "unit"), *entry, *exit, static_cast<std::uint32_t>(records)};
}

}  // namespace

std::variant<VisitsAnswer, std::string> ParseVisitsAnswer(std::string_view json) {
  bool isTooDeep = false;
  const auto isKept = [&](int depth, Json::parse_event_t, Json&) {
    isTooDeep = isTooDeep || depth > kDeepest;
    return !isTooDeep;
  };
  const Json answer = Json::parse(json, isKept, false);
  if (answer.is_discarded() || isTooDeep || !answer.is_object())
    return "The server's answer is no list of visits";
  const auto visits = answer.find("visits");
  if (visits == answer.end() || !visits->is_array()) return "The server's answer holds no list of visits";
  VisitsAnswer read{{}, CountOf(answer, "records"), CountOf(answer, "files"), TextOf(answer, "problem")};
  if (read.problem.size() > kMostProblem) read.problem.resize(kMostProblem);
  for (const Json& each : *visits) {
    if (read.visits.size() == kMostVisits) break;
    auto visit = VisitOf(each);
    if (!visit) return "The server's answer holds a visit that can't be read";
    read.visits.push_back(*std::move(visit));
  }
  return read;
}

std::string VisitsPath(const VisitsQuestion& question) {
  constexpr int kDecimals = 7;
  std::string path = "/visits?lat=" + FormatFixed(question.lat, 1, kDecimals) +
                     "&lng=" + FormatFixed(question.lng, 1, kDecimals) +
                     "&zoom=" + std::to_string(std::clamp(question.zoom, 0, kNearestZoom));
  for (const std::string& id : question.unitIds) path += "&unit=" + id;
  const TimeSpan all;
  if (question.span.first != all.first) path += "&from=" + Iso8601(MomentOf(question.span.first));
  if (question.span.last != all.last) path += "&to=" + Iso8601(MomentOf(question.span.last));
  return path + "&limit=" + std::to_string(question.limit);
}

}  // namespace pallomir
