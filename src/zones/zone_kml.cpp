#include <algorithm>
#include <charconv>
#include <cmath>
#include <pugixml.hpp>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

#include "zones/zone_collector.h"

namespace pallomir {
namespace {

// The names of our own data beside what KML knows.
constexpr char kKind[] = "topLevelKind";
constexpr char kId[] = "id";
constexpr char kParent[] = "parent";
constexpr std::pair<const char*, std::string ZoneOptions::*> kTexts[] = {
    {"daysOfWeek", &ZoneOptions::DaysOfWeek},
    {"startTime", &ZoneOptions::StartTime},
    {"endTime", &ZoneOptions::EndTime},
    {"spare", &ZoneOptions::Spare},
};

void AppendData(pugi::xml_node data, const char* name, const std::string& value) {
  pugi::xml_node item = data.append_child("Data");
  item.append_attribute("name") = name;
  item.append_child("value").text() = value.c_str();
}

void AppendNumber(std::string& text, double value) {
  char digits[400];
  text.append(digits, std::to_chars(digits, std::end(digits), value, std::chars_format::fixed).ptr);
}

// "longitude,latitude", separated by blanks; the first one is repeated at the end.
std::string CoordinatesOf(std::span<const ZoneVertex> vertices) {
  std::string text;
  const auto append = [&](const ZoneVertex& vertex) {
    if (!text.empty()) text += ' ';
    AppendNumber(text, vertex.lng);
    text += ',';
    AppendNumber(text, vertex.lat);
  };
  for (const ZoneVertex& vertex : vertices) append(vertex);
  append(vertices.front());
  return text;
}

void AppendPlacemark(pugi::xml_node document, const ZoneTree& tree, ZoneOrdinal zone) {
  const ZoneTree::Node& node = tree.At(zone);
  pugi::xml_node placemark = document.append_child("Placemark");
  placemark.append_child("name").text() = node.options.Description.c_str();
  pugi::xml_node data = placemark.append_child("ExtendedData");
  AppendData(data, kId, std::to_string(zone + 1));
  if (node.parent != ZoneTree::kNone) AppendData(data, kParent, std::to_string(node.parent + 1));
  for (const auto& [name, text] : kTexts) AppendData(data, name, node.options.*text);
  if (node.vertexCount == 0) return;
  pugi::xml_node ring =
      placemark.append_child("Polygon").append_child("outerBoundaryIs").append_child("LinearRing");
  ring.append_child("coordinates").text() = CoordinatesOf(tree.VerticesOf(zone)).c_str();
}

pugi::xml_node DataNode(pugi::xml_node owner, const char* name) {
  return owner.child("ExtendedData").find_child_by_attribute("Data", "name", name);
}

std::string DataOf(pugi::xml_node owner, const char* name) {
  return DataNode(owner, name).child_value("value");
}

// The name without what namespaces put before it.
std::string_view LocalName(pugi::xml_node node) {
  const std::string_view name = node.name();
  return name.substr(std::min(name.size(), name.find(':') + 1));
}

// The next node of the document in reading order; `node` and its children are not recursed into.
pugi::xml_node Next(pugi::xml_node node) {
  if (node.first_child()) return node.first_child();
  while (node && !node.next_sibling()) node = node.parent();
  return node.next_sibling();
}

// Behind `node` and all that it holds.
pugi::xml_node Behind(pugi::xml_node node) {
  while (node && !node.next_sibling()) node = node.parent();
  return node.next_sibling();
}

// Nothing where a number is none; an altitude is passed over.
std::optional<ZoneRing> RingOf(std::string_view text) {
  ZoneRing ring;
  const char* at = text.data();
  const char* const end = at + text.size();
  const auto number = [&](double& value) {
    const auto [stop, error] = std::from_chars(at, end, value);
    at = stop;
    return error == std::errc() && std::isfinite(value);
  };
  while (true) {
    while (at != end && std::string_view(" \t\r\n").find(*at) != std::string_view::npos) ++at;
    if (at == end) return ring;
    ZoneVertex vertex;
    if (!number(vertex.lng) || at == end || *at++ != ',' || !number(vertex.lat)) return std::nullopt;
    ring.push_back(vertex);
    while (at != end && std::string_view(" \t\r\n").find(*at) == std::string_view::npos) ++at;
  }
}

/// Reads placemarks wherever they lie; stops at the first fault.
class KmlReader {
 public:
  explicit KmlReader(WorkProgress& progress) : progress_(progress) {}

  ImportedZones Read(std::string_view file) {
    pugi::xml_document xml;
    const pugi::xml_parse_result result =
        xml.load_buffer(file.data(), file.size(), pugi::parse_default | pugi::parse_ws_pcdata_single);
    if (!result || xml.document_element().empty()) return {{}, false, "The file is no KML."};
    std::string kind;
    for (pugi::xml_node node = Next(xml); node && !progress_.isCancelled;) {
      if (kind.empty() && LocalName(node) == "Document") kind = DataOf(node, kKind);
      if (LocalName(node) == "Placemark") {
        ShowProgress(node, file);
        TakePlacemark(node);
        node = Behind(node);
      } else {
        node = Next(node);
      }
    }
    return zones_.Finish(kind);
  }

 private:
  // The offset is none, or one in another encoding, where the file is not in UTF-8.
  void ShowProgress(pugi::xml_node node, std::string_view file) {
    const auto offset = static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, node.offset_debug()));
    progress_.percent = static_cast<int>(std::min(offset, file.size()) * 100 / file.size());
  }

  void TakePlacemark(pugi::xml_node placemark) {
    ZoneCollector::Polygon polygon;
    polygon.options.Description = placemark.child_value("name");
    polygon.id = DataOf(placemark, kId);
    polygon.parent = DataOf(placemark, kParent);
    for (const auto& [name, text] : kTexts) polygon.options.*text = DataOf(placemark, name);
    polygon.isOurs = !DataNode(placemark, kTexts[0].first).empty();
    bool hasShape = false;
    const pugi::xml_node end = Behind(placemark);
    for (pugi::xml_node node = Next(placemark); node && node != end; node = Next(node)) {
      if (LocalName(node) != "Polygon") continue;
      hasShape = true;
      TakePolygon(polygon, node);
    }
    if (!hasShape && polygon.isOurs && !placemark.child("Point") && !placemark.child("LineString"))
      zones_.Take(std::move(polygon));
  }

  void TakePolygon(ZoneCollector::Polygon polygon, pugi::xml_node shape) {
    for (const char* boundary : {"outerBoundaryIs", "innerBoundaryIs"}) {
      for (const pugi::xml_node rings : shape.children(boundary)) {
        for (const pugi::xml_node ring : rings.children("LinearRing")) {
          auto corners = RingOf(ring.child_value("coordinates"));
          if (!corners) {
            return zones_.Fail("A corner of \"" + polygon.options.Description + "\" is no position.");
          }
          polygon.rings.push_back(std::move(*corners));
        }
      }
    }
    zones_.Take(std::move(polygon));
  }

  WorkProgress& progress_;
  ZoneCollector zones_;
};

}  // namespace

std::string WriteKml(const ZoneTree& tree) {
  pugi::xml_document xml;
  xml.append_child(pugi::node_declaration).append_attribute("version") = "1.0";
  pugi::xml_node kml = xml.append_child("kml");
  kml.append_attribute("xmlns") = "http://www.opengis.net/kml/2.2";
  pugi::xml_node document = kml.append_child("Document");
  AppendData(document.append_child("ExtendedData"), kKind, NameOf(tree.TopLevelKind()));
  for (ZoneOrdinal zone = 0; zone < tree.Count(); ++zone) AppendPlacemark(document, tree, zone);
  std::ostringstream text;
  xml.save(text, " ");
  return text.str();
}

ImportedZones ReadKml(std::string_view file, WorkProgress& progress) {
  return KmlReader(progress).Read(file);
}

}  // namespace pallomir
