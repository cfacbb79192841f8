#include "reports/been_here.h"

#include <algorithm>
#include <limits>
#include <set>
#include <utility>

#include "base/number_format.h"
#include "reports/record_time.h"
#include "reports/visits_answer.h"

namespace pallomir {
namespace {

constexpr std::size_t kMostAddress = 300;  // characters of it in a caption

std::string Count(std::uint64_t number, const char* what) {
  return Grouped(number) + " " + what + (number == 1 ? "" : "s");
}

}  // namespace

bool IsUnitId(const std::string& id) {
  return id.size() == kUnitIdSize &&
         std::ranges::all_of(id, [](char c) { return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F'); });
}

BeenHere::BeenHere(EventLoop& loop, const LocalClock& clock, std::filesystem::path dataFolder, Server server,
                   Host host)
    : clock_(clock),
      dataFolder_(std::move(dataFolder)),
      server_(std::move(server)),
      host_(std::move(host)),
      worker_(loop) {}

void BeenHere::Open(VisitTarget target, std::vector<SearchedUnit> units, const TimeWindow& window) {
  Close();
  target_ = std::move(target);
  units_ = std::move(units);
  address_ = target_.isZone ? target_.name : "";
  choices = {};
  choices.range = window;
}

void BeenHere::Close() {
  Drop();
  status_.clear();
}

void BeenHere::Drop() {
  worker_.Drop();
  if (std::exchange(isAsking_, false)) server_.query.Cancel();
  report_ = {};
  visits_.clear();
}

std::string BeenHere::Caption() const {
  return address_.empty() ? "Been Here?" : "Been to " + address_.substr(0, kMostAddress) + "?";
}

void BeenHere::SetAddress(const std::string& address) {
  if (target_.isZone) return;
  address_ = address;
  host_.changed();
}

std::string BeenHere::ButtonCaption() const {
  return IsSearching() ? SearchingCaption(report_.progress.records) : "Search Now";
}

std::string BeenHere::ProgressText() const {
  if (!IsSearching()) return {};
  if (isAsking_) return "The server searches";
  return Grouped(report_.progress.files) + " of " + Count(report_.progress.fileCount, "file");
}

std::string BeenHere::Line(std::size_t i) const { return VisitLine(visits_[i].unit + 1, visits_[i], clock_); }

std::string BeenHere::Text() const {
  std::string text;
  for (std::size_t i = 0; i < visits_.size(); ++i) text += Line(i) + "\r\n";
  return text;
}

std::string BeenHere::Details(std::size_t i) const {
  if (i >= visits_.size()) return {};
  const Visit& visit = visits_[i];
  const std::string place = "Visit " + std::to_string(i + 1) + " of " + std::to_string(visits_.size());
  return place + ": " + units_[visit.unit].caption + ", " + DurationText(DurationOf(visit)) + ", " +
         Count(visit.records, "record");
}

TimeWindow BeenHere::DaysOf(std::size_t i) const {
  const auto day = [this](std::uint32_t packed) { return WholeDay(clock_.ToLocal(MomentOf(packed))); };
  return {day(visits_[i].entry), day(visits_[i].exit) + kDay};
}

// Each once: of two units with one ID the first is named.
std::vector<std::size_t> BeenHere::ChosenUnits() const {
  std::vector<std::size_t> chosen;
  std::set<std::string> ids;
  for (std::size_t i = 0; i < units_.size(); ++i) {
    const bool isChosen = choices.unit == 0 || choices.unit == i + 1;
    if (isChosen && IsUnitId(units_[i].id) && ids.insert(units_[i].id).second) chosen.push_back(i);
  }
  return chosen;
}

// Nothing where the range ends before it starts.
std::optional<TimeSpan> BeenHere::ChosenSpan() const {
  if (choices.mostRecentOnly) return TimeSpan{};
  const Millis from =
      choices.fromBeginning ? std::numeric_limits<Millis>::min() : clock_.ToUtc(choices.range.start);
  const Millis until = clock_.ToUtc(choices.untilNow ? clock_.Now() : choices.range.end);
  if (until < from) return std::nullopt;
  TimeSpan span = SpanOf(from, until);
  if (choices.fromBeginning && span.first <= span.last) span.first = 0;
  return span;
}

void BeenHere::Search() {
  Drop();
  const auto span = ChosenSpan();
  if (!span) return Say("The range ends before it starts");
  searched_ = ChosenUnits();
  if (searched_.empty())
    return Say(units_.empty() ? "There is no mobile unit to search for"
                              : "The unit's ID is not 12 hexadecimal digits: it has no data files");
  begun_ = clock_.Now();
  const std::size_t limit = choices.mostRecentOnly ? 1 : kMostVisits;
  if (choices.atServer && !target_.isZone) {
    AskServer(*span, limit);
  } else {
    SearchHere(*span, limit);
  }
}

void BeenHere::SearchHere(const TimeSpan& span, std::size_t limit) {
  VisitOrder order;
  order.area = target_.area();
  if (!order.area) return Say("The zone is not there any more, or is another one now");
  order.dataFolder = dataFolder_;
  for (const std::size_t unit : searched_) order.unitIds.push_back(units_[unit].id);
  order.span = span;
  order.limit = limit;
  worker_.Start(std::move(order), [this](const VisitReport& report) { OnReport(report); });
  Say("Searching " + Count(searched_.size(), "unit"));
}

// Of very many units not all are named: the server then searches all of its own, and others are left out
// here.
void BeenHere::AskServer(const TimeSpan& span, std::size_t limit) {
  constexpr std::size_t kMostNamed = 150;
  VisitsQuestion question{target_.lat, target_.lng, target_.zoom, {}, span, limit};
  if (searched_.size() <= kMostNamed)
    for (const std::size_t unit : searched_) question.unitIds.push_back(units_[unit].id);
  isAsking_ = true;
  server_.query.Get("http://" + server_.webSite + VisitsPath(question),
                    [this](const WebQuery::Answer& answer) { OnAnswer(answer); });
  Say("Asking the server at " + server_.webSite);
}

void BeenHere::OnAnswer(const WebQuery::Answer& answer) {
  constexpr int kOk = 200;
  constexpr std::size_t kMostOfRefusal = 300;
  isAsking_ = false;
  if (!answer.error.empty()) return Say("The server can't be asked: " + answer.error);
  if (answer.status != kOk)
    return Say("The server refuses (" + std::to_string(answer.status) +
               "): " + answer.body.substr(0, kMostOfRefusal));
  auto read = ParseVisitsAnswer(answer.body);
  if (const auto* complaint = std::get_if<std::string>(&read)) return Say(*complaint);
  const auto& told = std::get<VisitsAnswer>(read);
  VisitReport report;
  report.isOver = true;
  report.progress.records = told.records;
  report.problem = told.problem;
  for (const ToldVisit& visit : told.visits) {
    const auto unit =
        std::ranges::find(searched_, visit.unitId, [this](std::size_t i) { return units_[i].id; });
    if (unit == searched_.end()) continue;
    report.visits.push_back(
        {static_cast<std::size_t>(unit - searched_.begin()), visit.entry, visit.exit, visit.records});
  }
  OnReport(report);
}

bool BeenHere::Cancel() {
  if (!IsSearching()) return false;
  worker_.Stop();
  if (isAsking_) {
    Drop();
    Say("Search cancelled");
  }
  return true;
}

void BeenHere::Load(std::size_t i) {
  if (i < visits_.size()) host_.load(units_[visits_[i].unit].id, DaysOf(i));
}

void BeenHere::OnReport(const VisitReport& report) {
  report_ = report;
  if (!report.isOver) return host_.changed();
  visits_ = report.visits;
  for (Visit& visit : visits_) visit.unit = searched_[visit.unit];
  Say(EndOf(report));
  if (!report.problem.empty()) host_.failed(report.problem);
}

std::string BeenHere::EndOf(const VisitReport& report) const {
  if (report.hasNoFolder) return "There is no data folder " + dataFolder_.string();
  std::string text = "Done Searching ";
  if (report.isStopped) text = "Search cancelled ";
  if (!report.problem.empty()) text = "Search ended by an error ";
  Millis total = 0;
  for (const Visit& visit : visits_) total += DurationOf(visit);
  text += "- " + Count(visits_.size(), "visit");
  if (total > 0) text += ", " + DurationText(total) + " in all";
  const auto seconds = static_cast<double>(std::max<Millis>(0, clock_.Now() - begun_)) / kSecond;
  return text + " (" + Count(report.progress.records, "record") + " in " + FormatFixed(seconds, 1, 2) + " s)";
}

void BeenHere::Say(std::string status) {
  status_ = std::move(status);
  host_.changed();
}

}  // namespace pallomir
