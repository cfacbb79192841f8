#include "zones/zone_collector.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include "zones/zone_options_model.h"

namespace pallomir {
namespace {

constexpr std::size_t kTop = static_cast<std::size_t>(-1);

// The parents of all polygons, by index. Where they form a circle, its first one goes to the top.
std::vector<std::size_t> ParentsOf(const std::vector<ZoneCollector::Polygon>& polygons) {
  std::map<std::string, std::size_t> byId;
  for (std::size_t i = 0; i < polygons.size(); ++i) {
    if (!polygons[i].id.empty()) byId.emplace(polygons[i].id, i);
  }
  std::vector<std::size_t> parents(polygons.size(), kTop);
  for (std::size_t i = 0; i < polygons.size(); ++i) {
    const auto parent = byId.find(polygons[i].parent);
    if (parent != byId.end()) parents[i] = parent->second;
  }
  // Each polygon is walked up from once: `walk` says in which walk it was seen first.
  std::vector<std::size_t> walk(polygons.size(), kTop);
  for (std::size_t first = 0; first < polygons.size(); ++first) {
    std::size_t at = first;
    while (at != kTop && walk[at] == kTop) {
      walk[at] = first;
      at = parents[at];
    }
    if (at != kTop && walk[at] == first) parents[at] = kTop;
  }
  return parents;
}

// What the zone file can't hold goes.
void CleanDescription(ZoneOptions& options) {
  ZoneOptionsModel model(options);
  model.SetDescription(options.Description);
  options.Description = model.Description();
}

void CompleteOptions(ZoneOptions& options, std::size_t number) {
  const auto isTime = [](const std::string& text) {
    return text.size() == 4 && std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
  };
  if (options.Description.empty()) options.Description = "Zone " + std::to_string(number);
  if (options.DaysOfWeek.size() != 7) options.DaysOfWeek = ZoneOptions().DaysOfWeek;
  if (!isTime(options.StartTime) || !isTime(options.EndTime))
    options.StartTime = options.EndTime = ZoneOptions().StartTime;
}

}  // namespace

void ZoneCollector::Take(Polygon polygon) {
  if (!problem_.empty()) return;
  CleanDescription(polygon.options);
  if (!polygon.isOurs) CompleteOptions(polygon.options, polygons_.size() + 1);
  for (ZoneRing& ring : polygon.rings) {
    for (const ZoneVertex& vertex : ring) {
      if (!(std::abs(vertex.lat) <= 90 && std::abs(vertex.lng) <= 180))
        return Fail("A corner of \"" + polygon.options.Description + "\" lies outside the world.");
    }
    if (ring.size() > 1 && ring.front() == ring.back()) ring.pop_back();
  }
  polygons_.push_back(std::move(polygon));
}

void ZoneCollector::Fail(std::string problem) {
  if (problem_.empty()) problem_ = std::move(problem);
}

ImportedZones ZoneCollector::Finish(const std::string& kind) const {
  const bool namesKind = kind == NameOf(ZoneKind::kAlerted) || kind == NameOf(ZoneKind::kNonAlert);
  if (!problem_.empty()) return {{}, false, problem_};
  if (polygons_.empty() && !namesKind) return {{}, false, "The file holds no polygon."};
  const bool isAlerted = kind != NameOf(ZoneKind::kNonAlert);
  return {Build(isAlerted ? ZoneKind::kAlerted : ZoneKind::kNonAlert), namesKind, {}};
}

ZoneTree ZoneCollector::Build(ZoneKind topLevelKind) const {
  const std::vector<std::size_t> parents = ParentsOf(polygons_);
  std::vector<std::vector<std::size_t>> children(polygons_.size());
  std::vector<std::pair<std::size_t, int>> pending;  // polygons and their depths, the next one last
  for (std::size_t i = polygons_.size(); i-- > 0;) {
    if (parents[i] == kTop) {
      pending.emplace_back(i, 1);
    } else {
      children[parents[i]].push_back(i);
    }
  }
  ZoneTreeBuilder builder(topLevelKind);
  while (!pending.empty()) {
    const auto [i, depth] = pending.back();
    pending.pop_back();
    const Polygon& polygon = polygons_[i];
    builder.Append(depth, polygon.options, polygon.rings.empty() ? ZoneRing() : polygon.rings.front());
    for (std::size_t hole = 1; hole < polygon.rings.size(); ++hole) {
      ZoneOptions options;
      options.Description = polygon.options.Description + " (hole)";
      builder.Append(depth + 1, options, polygon.rings[hole]);
    }
    for (const std::size_t child : children[i]) pending.emplace_back(child, depth + 1);
  }
  return builder.Build();
}

std::optional<ZoneFormat> FormatOfName(std::string_view fileName) {
  std::string end(fileName.substr(std::min(fileName.size(), fileName.rfind('.') + 1)));
  std::ranges::transform(end, end.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; });
  if (end == "geojson" || end == "json") return ZoneFormat::kGeoJson;
  if (end == "kml") return ZoneFormat::kKml;
  return std::nullopt;
}

std::string ExportZones(const ZoneTree& tree, ZoneFormat format) {
  return format == ZoneFormat::kGeoJson ? WriteGeoJson(tree) : WriteKml(tree);
}

ImportedZones ImportZones(std::string_view file, ZoneFormat format, WorkProgress* progress) {
  if (file.size() > kMaxImportSize) return {{}, false, "The file is larger than 64 MiB."};
  WorkProgress unwatched;
  WorkProgress& watched = progress ? *progress : unwatched;
  return format == ZoneFormat::kGeoJson ? ReadGeoJson(file, watched) : ReadKml(file, watched);
}

ZoneTree WithZonesAppended(const ZoneTree& tree, const ZoneTree& more) {
  ZoneTreeBuilder builder(tree.TopLevelKind());
  for (const ZoneTree* part : {&tree, &more}) {
    for (ZoneOrdinal zone = 0; zone < part->Count(); ++zone)
      builder.Append(part->At(zone).depth, part->At(zone).options, part->VerticesOf(zone));
  }
  return builder.Build();
}

}  // namespace pallomir
