#include <iterator>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

#include "zones/zone_collector.h"

namespace pallomir {
namespace {

using Json = nlohmann::ordered_json;

// The names of our own properties.
constexpr char kKind[] = "topLevelKind";
constexpr char kParent[] = "parent";
constexpr std::pair<const char*, std::string ZoneOptions::*> kTexts[] = {
    {"name", &ZoneOptions::Description},    {"daysOfWeek", &ZoneOptions::DaysOfWeek},
    {"startTime", &ZoneOptions::StartTime}, {"endTime", &ZoneOptions::EndTime},
    {"spare", &ZoneOptions::Spare},
};

// GeoJSON closes a ring by repeating its first position.
Json RingOf(std::span<const ZoneVertex> vertices) {
  Json ring = Json::array();
  for (const ZoneVertex& vertex : vertices) ring.push_back({vertex.lng, vertex.lat});
  if (!vertices.empty()) ring.push_back(ring.front());
  return ring;
}

Json FeatureOf(const ZoneTree& tree, ZoneOrdinal zone) {
  const ZoneTree::Node& node = tree.At(zone);
  Json properties;
  for (const auto& [name, text] : kTexts) properties[name] = node.options.*text;
  if (node.parent != ZoneTree::kNone) properties[kParent] = std::to_string(node.parent + 1);
  Json geometry;  // null for a zone without corners
  if (node.vertexCount > 0) {
    geometry["type"] = "Polygon";
    geometry["coordinates"] = Json::array({RingOf(tree.VerticesOf(zone))});
  }
  Json feature;
  feature["type"] = "Feature";
  feature["id"] = std::to_string(zone + 1);
  feature["properties"] = std::move(properties);
  feature["geometry"] = std::move(geometry);
  return feature;
}

// A member as text, numbers included; empty where there is none.
std::string TextOf(const Json& object, const char* name) {
  if (!object.is_object() || !object.contains(name)) return {};
  const Json& value = object[name];
  if (value.is_string()) return value.get<std::string>();
  return value.is_number() ? value.dump() : std::string();
}

const Json& Member(const Json& object, const char* name) {
  static const Json kNone;
  return object.is_object() && object.contains(name) ? object[name] : kNone;
}

/// Goes through the file's bytes for the parser, which has no other way to tell how far it is. Work that is
/// cancelled ends the file early.
class WatchedBytes {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;

  WatchedBytes(std::string_view file, const char* at, WorkProgress& progress)
      : file_(file), at_(at), progress_(&progress) {}
  reference operator*() const { return *at_; }
  WatchedBytes& operator++() {
    constexpr std::ptrdiff_t kLook = 1 << 16;
    if ((++at_ - file_.data()) % kLook == 0) Look();
    return *this;
  }
  bool operator==(const WatchedBytes& other) const { return at_ == other.at_; }
  bool operator!=(const WatchedBytes& other) const { return at_ != other.at_; }

 private:
  void Look() {
    constexpr std::ptrdiff_t kShareOfParsing = 80;  // percent of the whole import
    progress_->percent =
        static_cast<int>((at_ - file_.data()) * kShareOfParsing / static_cast<std::ptrdiff_t>(file_.size()));
    if (progress_->isCancelled) at_ = file_.data() + file_.size();
  }

  std::string_view file_;
  const char* at_;
  WorkProgress* progress_;
};

/// Reads features; stops at the first fault.
class GeoJsonReader {
 public:
  explicit GeoJsonReader(WorkProgress& progress) : progress_(progress) {}

  ImportedZones Read(std::string_view file) {
    const Json json = Json::parse(WatchedBytes(file, file.data(), progress_),
                                  WatchedBytes(file, file.data() + file.size(), progress_), nullptr, false);
    if (json.is_discarded()) return {{}, false, "The file is no GeoJSON."};
    if (TextOf(json, "type") == "FeatureCollection") {
      for (const Json& feature : Member(json, "features")) {
        if (progress_.isCancelled) break;
        TakeFeature(feature);
      }
    } else if (TextOf(json, "type") == "Feature") {
      TakeFeature(json);
    } else {
      TakeGeometry({}, json);
    }
    return zones_.Finish(TextOf(json, kKind));
  }

 private:
  void TakeFeature(const Json& feature) {
    const Json& properties = Member(feature, "properties");
    ZoneCollector::Polygon polygon;
    polygon.id = TextOf(feature, "id");
    polygon.parent = TextOf(properties, kParent);
    for (const auto& [name, text] : kTexts) polygon.options.*text = TextOf(properties, name);
    const Json& geometry = Member(feature, "geometry");
    polygon.isOurs = properties.is_object() && properties.contains(kTexts[1].first);
    if (geometry.is_null() && polygon.isOurs) {
      zones_.Take(std::move(polygon));
    } else {
      TakeGeometry(std::move(polygon), geometry);
    }
  }

  void TakeGeometry(ZoneCollector::Polygon polygon, const Json& geometry) {
    const std::string type = TextOf(geometry, "type");
    if (type == "Polygon") {
      TakePolygon(std::move(polygon), Member(geometry, "coordinates"));
    } else if (type == "MultiPolygon") {
      for (const Json& rings : Member(geometry, "coordinates")) TakePolygon(polygon, rings);
    }
  }

  void TakePolygon(ZoneCollector::Polygon polygon, const Json& rings) {
    for (const Json& positions : rings) {
      ZoneRing& ring = polygon.rings.emplace_back();
      for (const Json& position : positions) {
        if (!position.is_array() || position.size() < 2 || !position[0].is_number() ||
            !position[1].is_number()) {
          return zones_.Fail("A corner of \"" + polygon.options.Description + "\" is no position.");
        }
        ring.push_back({position[1].get<double>(), position[0].get<double>()});
      }
    }
    zones_.Take(std::move(polygon));
  }

  WorkProgress& progress_;
  ZoneCollector zones_;
};

}  // namespace

std::string WriteGeoJson(const ZoneTree& tree) {
  Json features = Json::array();
  for (ZoneOrdinal zone = 0; zone < tree.Count(); ++zone) features.push_back(FeatureOf(tree, zone));
  Json collection;
  collection["type"] = "FeatureCollection";
  collection[kKind] = NameOf(tree.TopLevelKind());
  collection["features"] = std::move(features);
  return collection.dump(1, ' ', false, Json::error_handler_t::replace) + '\n';
}

ImportedZones ReadGeoJson(std::string_view file, WorkProgress& progress) {
  return GeoJsonReader(progress).Read(file);
}

}  // namespace pallomir
