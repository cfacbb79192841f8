#include "station/gpx_reader.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <pugixml.hpp>

#include "base/number_format.h"

namespace pallomir::station {
namespace {

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string_view LocalName(const pugi::xml_node& node) {
  const std::string_view name = node.name();
  return name.substr(name.find(':') + 1);  // npos + 1 is 0
}

pugi::xml_node Child(const pugi::xml_node& node, std::string_view name) {
  return node.find_child([name](const pugi::xml_node& child) { return LocalName(child) == name; });
}

// A number in the point itself or anywhere in its extensions.
std::optional<double> Measured(const pugi::xml_node& point, std::string_view name) {
  pugi::xml_node found = Child(point, name);
  if (!found)
    found = Child(point, "extensions").find_node([name](const pugi::xml_node& n) {
      return LocalName(n) == name;
    });
  return ParseNumber(Trimmed(found.child_value()));
}

std::optional<Place> PlaceOf(const pugi::xml_node& point) {
  const auto latitude = ParseNumber(Trimmed(point.attribute("lat").value()));
  const auto longitude = ParseNumber(Trimmed(point.attribute("lon").value()));
  if (!latitude || !longitude || std::fabs(*latitude) > 90 || std::fabs(*longitude) > 180)
    return std::nullopt;
  return Place{*latitude, *longitude};
}

void TakePoint(const pugi::xml_node& node, int segment, GpxTrack& track) {
  const std::string_view timeText = Trimmed(Child(node, "time").child_value());
  const auto utc = ParseGpxTime(timeText);
  const auto place = PlaceOf(node);
  if (timeText.empty()) {
    ++track.leftOut.withoutTime;
  } else if (!utc) {
    ++track.leftOut.unreadableTime;
  } else if (!place) {
    ++track.leftOut.impossiblePosition;
  } else {
    TrackPoint point{*utc, *place, Measured(node, "speed"), Measured(node, "course"), segment};
    if (point.speed && *point.speed < 0) point.speed.reset();  // some devices say so when they don't know
    if (point.course) point.course = std::fmod(std::fmod(*point.course, 360) + 360, 360);
    track.points.push_back(point);
  }
}

std::size_t LineOf(std::string_view text, std::ptrdiff_t offset) {
  const auto end = text.begin() + std::clamp<std::ptrdiff_t>(offset, 0, std::ssize(text));
  return static_cast<std::size_t>(std::count(text.begin(), end, '\n')) + 1;
}

// Reads exactly `count` digits off the front of `text`; -1 where they are not there.
int TakeDigits(std::string_view& text, std::size_t count) {
  int value = 0;
  if (text.size() < count) return -1;
  for (const char c : text.substr(0, count)) {
    if (c < '0' || c > '9') return -1;
    value = value * 10 + (c - '0');
  }
  text.remove_prefix(count);
  return value;
}

bool TakeCharacter(std::string_view& text, std::string_view oneOf) {
  if (text.empty() || oneOf.find(text.front()) == oneOf.npos) return false;
  text.remove_prefix(1);
  return true;
}

// The fraction of a second behind the point, cut to milliseconds. Nothing for a point without digits.
std::optional<Millis> TakeFraction(std::string_view& text) {
  if (!TakeCharacter(text, ".,")) return 0;
  Millis fraction = 0, weight = 100;
  std::size_t digits = 0;
  for (; digits < text.size() && text[digits] >= '0' && text[digits] <= '9'; ++digits, weight /= 10)
    fraction += (text[digits] - '0') * weight;
  text.remove_prefix(digits);
  return digits > 0 ? std::optional(fraction) : std::nullopt;
}

// "Z", nothing, or how far the clock that was read is ahead of UTC.
std::optional<Millis> TakeOffset(std::string_view text) {
  if (text.empty() || text == "Z" || text == "z") return 0;
  const Millis sign = text.front() == '-' ? -1 : 1;
  if (!TakeCharacter(text, "+-")) return std::nullopt;
  const int hours = TakeDigits(text, 2);
  int minutes = 0;
  if (!text.empty()) {
    TakeCharacter(text, ":");
    minutes = TakeDigits(text, 2);
  }
  if (hours < 0 || hours > 18 || minutes < 0 || minutes > 59 || !text.empty()) return std::nullopt;
  return sign * (hours * kHour + minutes * kMinute);
}

}  // namespace

std::optional<Millis> ParseGpxTime(std::string_view text) {
  CivilTime time;
  time.year = TakeDigits(text, 4);
  const bool hasMonth = TakeCharacter(text, "-");
  time.month = TakeDigits(text, 2);
  const bool hasDay = TakeCharacter(text, "-");
  time.day = TakeDigits(text, 2);
  const bool hasTime = TakeCharacter(text, "Tt ");
  time.hour = TakeDigits(text, 2);
  const bool hasMinute = TakeCharacter(text, ":");
  time.minute = TakeDigits(text, 2);
  const bool hasSecond = TakeCharacter(text, ":");
  time.second = TakeDigits(text, 2);
  if (!hasMonth || !hasDay || !hasTime || !hasMinute || !hasSecond || time.year < 0) return std::nullopt;
  if (!IsPossible(time)) return std::nullopt;
  const auto fraction = TakeFraction(text);
  const auto offset = TakeOffset(text);
  if (!fraction || !offset) return std::nullopt;
  return ToMillis(time) + *fraction - *offset;
}

GpxTrack ReadGpx(std::string_view text) {
  GpxTrack track;
  pugi::xml_document document;
  const auto result = document.load_buffer(text.data(), text.size());
  if (!result) {
    track.error = "is not XML: " + std::string(result.description()) + " in line " +
                  std::to_string(LineOf(text, result.offset));
    return track;
  }
  const pugi::xml_node root = document.document_element();
  if (LocalName(root) != "gpx") {
    track.error = "is XML, but no GPX: it begins with <" + std::string(root.name()) + ">";
    return track;
  }
  int segment = 0;
  for (const pugi::xml_node& trk : root.children()) {
    if (LocalName(trk) != "trk") continue;
    for (const pugi::xml_node& trkseg : trk.children()) {
      if (LocalName(trkseg) != "trkseg") continue;
      ++segment;
      for (const pugi::xml_node& point : trkseg.children())
        if (LocalName(point) == "trkpt") TakePoint(point, segment, track);
    }
  }
  return track;
}

}  // namespace pallomir::station
