#include "station/visits_query.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <map>

#include "base/number_format.h"
#include "station/web/http_request.h"
#include "tracking/packets.h"

namespace pallomir::station {
namespace {

constexpr std::array<std::string_view, 4> kOfBox{"minLat", "maxLat", "minLng", "maxLng"};
constexpr std::array<std::string_view, 4> kOfPlace{"lat", "lng", "zoom", "radius"};
constexpr std::array<std::string_view, 3> kOthers{"from", "to", "limit"};

template <std::size_t count>
bool IsAmong(const std::array<std::string_view, count>& names, std::string_view name) {
  return std::ranges::find(names, name) != names.end();
}

constexpr const char* kNoPlace =
    "Say where: lat and lng with zoom or radius, or minLat, maxLat, minLng and maxLng.";

/// The query taken apart. The first thing that is wrong is its complaint.
class Parameters {
 public:
  explicit Parameters(std::string_view query) {
    while (!query.empty() && complaint_.empty()) {
      const std::size_t end = std::min(query.find('&'), query.size());
      if (end > 0) Take(query.substr(0, end));
      query.remove_prefix(std::min(end + 1, query.size()));
    }
  }

  const std::string& Complaint() const { return complaint_; }
  const std::vector<std::string>& Units() const { return units_; }
  bool Has(std::string_view name) const { return values_.contains(name); }
  void Complain(std::string text) {
    if (complaint_.empty()) complaint_ = std::move(text);
  }

  /// A number of this range; `usual` where it is not named.
  double Number(std::string_view name, double low, double high, double usual = 0) {
    const auto found = values_.find(name);
    if (found == values_.end()) return usual;
    const auto value = ParseNumber(found->second);
    if (value && *value >= low && *value <= high) return *value;
    Complain(std::string(name) + " is no number from " + Plain(low) + " to " + Plain(high) + ".");
    return usual;
  }

  std::size_t Whole(std::string_view name, std::size_t low, std::size_t high, std::size_t usual) {
    const double value =
        Number(name, static_cast<double>(low), static_cast<double>(high), static_cast<double>(usual));
    if (value != std::floor(value)) Complain(std::string(name) + " is no whole number.");
    return static_cast<std::size_t>(value);
  }

  std::optional<Millis> Moment(std::string_view name, bool isEnd) {
    const auto found = values_.find(name);
    if (found == values_.end()) return std::nullopt;
    const auto moment = ParseMoment(found->second, isEnd);
    if (!moment) Complain(std::string(name) + " is no time: give 2026-11-22 or 2026-11-22T15:04:05Z.");
    return moment;
  }

 private:
  static std::string Plain(double number) {
    return number == std::floor(number) ? std::to_string(static_cast<std::int64_t>(number))
                                        : FormatFixed(number, 1, 1);
  }

  void Take(std::string_view part) {
    const std::size_t equals = std::min(part.find('='), part.size());
    const auto name = PercentDecoded(part.substr(0, equals));
    auto value = PercentDecoded(part.substr(std::min(equals + 1, part.size())));
    if (!name || !value) return Complain("A % in the query is not followed by two hexadecimal digits.");
    if (*name == "unit") return TakeUnit(std::move(*value));
    if (!IsAmong(kOfBox, *name) && !IsAmong(kOfPlace, *name) && !IsAmong(kOthers, *name))
      return Complain("The query has an unknown name. " + std::string(kNoPlace) +
                      " Besides: unit, from, to, limit.");
    if (!values_.emplace(*name, std::move(*value)).second) Complain(*name + " is given twice.");
  }

  void TakeUnit(std::string id) {
    std::ranges::transform(id, id.begin(),
                           [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    if (!IsUnitId(id)) return Complain("unit is no ID: 12 characters of 0-9 and A-F.");
    units_.push_back(std::move(id));
  }

  std::map<std::string, std::string, std::less<>> values_;
  std::vector<std::string> units_;
  std::string complaint_;
};

// The rectangle around a place goes beyond these near a pole and the date line.
constexpr double kFarthest = 1e9;

DegreeBox TakeBox(Parameters& parameters) {
  const auto edge = [&](std::string_view name) {
    if (!parameters.Has(name)) parameters.Complain(std::string(name) + " is missing.");
    return parameters.Number(name, -kFarthest, kFarthest);
  };
  const DegreeBox box{edge("minLat"), edge("maxLat"), edge("minLng"), edge("maxLng")};
  if (box.minLat > box.maxLat) parameters.Complain("minLat lies above maxLat.");
  if (box.minLng > box.maxLng) parameters.Complain("minLng lies above maxLng.");
  return box;
}

void TakePlace(Parameters& parameters, VisitsCommand& command) {
  const auto isNamed = [&](std::string_view name) { return parameters.Has(name); };
  const bool hasBox = std::ranges::any_of(kOfBox, isNamed);
  const bool hasPlace = std::ranges::any_of(kOfPlace, isNamed);
  if (hasBox && !hasPlace) {
    command.box = TakeBox(parameters);
    return;
  }
  if (hasBox || !parameters.Has("lat") || !parameters.Has("lng")) return parameters.Complain(kNoPlace);
  command.at = Place{parameters.Number("lat", -90, 90), parameters.Number("lng", -180, 180)};
  command.zoom =
      static_cast<int>(parameters.Whole("zoom", 0, kNearestZoom, static_cast<std::size_t>(command.zoom)));
  if (parameters.Has("radius"))
    command.radius = parameters.Number("radius", kShortestRadius, kLongestRadius, kShortestRadius);
}

}  // namespace

std::variant<VisitsCommand, std::string> ParseVisitsQuery(std::string_view query) {
  Parameters parameters(query);
  VisitsCommand command;
  TakePlace(parameters, command);
  command.unitIds = parameters.Units();
  command.from = parameters.Moment("from", false);
  command.until = parameters.Moment("to", true);
  command.limit = parameters.Whole("limit", 1, kMostVisits, kMostVisits);
  command.asJson = true;
  if (!parameters.Complaint().empty()) return parameters.Complaint();
  return command;
}

}  // namespace pallomir::station
