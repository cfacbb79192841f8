#include "station/visits_service.h"

#include <utility>

#include "station/common/text.h"
#include "station/store/open_store.h"
#include "station/visits_query.h"
#include "ui/box_edit.h"

namespace pallomir::station {
namespace {

using std::chrono::steady_clock;

std::string AsJson(const VisitsOutcome& outcome) {
  // Names of files, which it may tell, are bytes of any kind.
  const std::string problem = ValidUtf8(Trimmed(outcome.complaint, "\n"));
  const std::string visits = outcome.list.empty() ? "[]" : outcome.list.substr(0, outcome.list.size() - 1);
  return "{\"visits\":" + visits + ",\"records\":" + std::to_string(outcome.records) +
         ",\"files\":" + std::to_string(outcome.files) + ",\"problem\":" + QuotedForJson(problem) + "}\n";
}

}  // namespace

WebService VisitsService(std::filesystem::path data, std::chrono::milliseconds longest) {
  return [data = std::move(data), longest](const std::string& query, const std::stop_token& stop) {
    const auto command = ParseVisitsQuery(query);
    if (const auto* complaint = std::get_if<std::string>(&command))
      return WebAnswer{"400 Bad Request", "text/plain; charset=utf-8", *complaint + "\n", ""};
    const auto deadline = steady_clock::now() + longest;
    // A store of its own: the station's belongs to another thread.
    const auto store = OpenStore(data, [](const std::string&) {});
    const VisitsOutcome outcome = FindVisits(std::get<VisitsCommand>(command), *store, [&]() -> std::string {
      if (stop.stop_requested()) return "The search was stopped.";
      return steady_clock::now() < deadline ? "" : "The search took too long and was ended.";
    });
    return WebAnswer{"200 OK", "application/json", AsJson(outcome), ""};
  };
}

}  // namespace pallomir::station
