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

/// Reads features; stops at the first fault.
class GeoJsonReader {
 public:
  ImportedZones Read(std::string_view file) {
    const Json json = Json::parse(file, nullptr, false);
    if (json.is_discarded()) return {{}, false, "The file is no GeoJSON."};
    if (TextOf(json, "type") == "FeatureCollection") {
      for (const Json& feature : Member(json, "features")) TakeFeature(feature);
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
    const bool isOurs = properties.is_object() && properties.contains(kTexts[1].first);
    if (geometry.is_null() && isOurs) {
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

ImportedZones ReadGeoJson(std::string_view file) { return GeoJsonReader().Read(file); }

}  // namespace pallomir
