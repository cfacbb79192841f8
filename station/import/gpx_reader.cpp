#include "station/import/gpx_reader.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "base/number_format.h"
#include "station/common/text.h"
#include "station/import/xml_stream.h"

namespace pallomir::station {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

constexpr std::string_view kPathToPoint[] = {"gpx", "trk", "trkseg", "trkpt"};
constexpr std::size_t kSegmentLevel = 3;
constexpr std::size_t kPointLevel = 4;

// The longest time or number in characters. Longer ones can't be read.
constexpr std::size_t kMaxFieldSize = 64;

/// The text of an element, without blanks before it. Keeps no more of it than a time or number has.
class Field {
 public:
  bool IsThere() const { return isThere_; }
  void Begin() { isThere_ = true; }
  void Add(std::string_view part) {
    if (text_.empty()) part.remove_prefix(std::min(part.find_first_not_of(kBlanks), part.size()));
    text_.append(part.substr(0, kMaxFieldSize - text_.size()));
  }

  bool IsEmpty() const { return text_.empty(); }
  std::optional<double> Number() const {
    return IsCut() ? std::nullopt : ParseNumber(Trimmed(text_, kBlanks));
  }
  std::optional<Millis> Time() const {
    return IsCut() ? std::nullopt : ParseGpxTime(Trimmed(text_, kBlanks));
  }

 private:
  bool IsCut() const { return Trimmed(text_, kBlanks).size() == kMaxFieldSize; }

  bool isThere_ = false;
  std::string text_;
};

/// A point that has not been read completely.
struct OpenPoint {
  std::optional<Place> place;
  Field time, speed, course;
  bool hasExtensions = false;
  Field extensionSpeed, extensionCourse;

  std::optional<double> Speed() const { return (speed.IsThere() ? speed : extensionSpeed).Number(); }
  std::optional<double> Course() const { return (course.IsThere() ? course : extensionCourse).Number(); }
};

std::optional<Place> PlaceOf(const XmlAttributes& attributes) {
  const auto latitude = ParseNumber(Trimmed(attributes.Find("lat"), kBlanks));
  const auto longitude = ParseNumber(Trimmed(attributes.Find("lon"), kBlanks));
  if (!latitude || !longitude || std::fabs(*latitude) > 90 || std::fabs(*longitude) > 180)
    return std::nullopt;
  return Place{*latitude, *longitude};
}

class GpxEvents : public XmlEvents {
 public:
  GpxEvents(Recording& recording, std::size_t maxPoints)
      : recording_(recording),
        maxPoints_(maxPoints),
        segment_(recording.points.empty() ? 0 : recording.points.back().segment) {}

  bool OnStart(std::string_view name, const XmlAttributes& attributes) override;
  void OnEnd() override;
  void OnText(std::string_view part) override {
    if (field_ != nullptr && depth_ == fieldDepth_) field_->Add(part);
  }

  const std::string& Error() const { return error_; }

 private:
  void OpenField(std::string_view name);
  void TakePoint();

  Recording& recording_;
  std::size_t maxPoints_;
  int segment_;
  std::size_t depth_ = 0;
  std::size_t matched_ = 0;  ///< how many open elements, from the first on, are those of kPathToPoint
  OpenPoint point_;
  bool isInExtensions_ = false;
  Field* field_ = nullptr;      ///< the field of `point_` that is being read, if any
  std::size_t fieldDepth_ = 0;  ///< how deep its element is
  std::string error_;
};

bool GpxEvents::OnStart(std::string_view name, const XmlAttributes& attributes) {
  ++depth_;
  if (depth_ == 1 && name != kPathToPoint[0])
    error_ = "is no GPX: it begins with <" + std::string(name.substr(0, kMaxFieldSize)) + ">";
  if (!error_.empty()) return false;
  if (matched_ == kPointLevel) {
    OpenField(name);
  } else if (matched_ + 1 == depth_ && name == kPathToPoint[matched_]) {
    ++matched_;
    if (matched_ == kSegmentLevel) ++segment_;
    if (matched_ == kPointLevel) point_ = {PlaceOf(attributes), {}, {}, {}, false, {}, {}};
  }
  return true;
}

// Of several fields with the same name the first one counts. In the extensions they may stand at any depth.
void GpxEvents::OpenField(std::string_view name) {
  if (field_ != nullptr) return;
  const bool isChild = depth_ == kPointLevel + 1;
  Field* field = nullptr;
  if (isChild && name == "time") field = &point_.time;
  if (name == "speed" && (isChild || isInExtensions_))
    field = isChild ? &point_.speed : &point_.extensionSpeed;
  if (name == "course" && (isChild || isInExtensions_))
    field = isChild ? &point_.course : &point_.extensionCourse;
  if (isChild && name == "extensions" && !point_.hasExtensions) isInExtensions_ = point_.hasExtensions = true;
  if (field == nullptr || field->IsThere()) return;
  field->Begin();
  field_ = field;
  fieldDepth_ = depth_;
}

void GpxEvents::OnEnd() {
  assert(depth_ > 0 && matched_ <= depth_);
  if (field_ != nullptr && depth_ == fieldDepth_) field_ = nullptr;
  if (depth_ == kPointLevel + 1) isInExtensions_ = false;
  if (matched_ == depth_) {
    if (matched_ == kPointLevel) TakePoint();
    --matched_;
  }
  --depth_;
}

void GpxEvents::TakePoint() {
  const auto utc = point_.time.Time();
  if (point_.time.IsEmpty()) {
    ++recording_.leftOut.withoutTime;
  } else if (!utc) {
    ++recording_.leftOut.unreadableTime;
  } else if (!point_.place) {
    ++recording_.leftOut.impossiblePosition;
  } else if (recording_.points.size() == maxPoints_) {
    error_ = "has too many points: an import takes " + std::to_string(maxPoints_) + " at most";
  } else {
    TrackPoint point{*utc, *point_.place, point_.Speed(), point_.Course(), segment_};
    if (point.speed && *point.speed < 0) point.speed.reset();  // how some devices say that they don't know
    if (point.course) point.course = std::fmod(std::fmod(*point.course, 360) + 360, 360);
    recording_.points.push_back(point);
  }
}

// Removes exactly `count` digits from the front of `text` and returns their value; -1 if they are not there.
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

// Removes a fraction of a second and returns it cut to milliseconds: 0 if there is none, nothing for a
// decimal point without digits.
std::optional<Millis> TakeFraction(std::string_view& text) {
  if (!TakeCharacter(text, ".,")) return 0;
  Millis fraction = 0, weight = 100;
  std::size_t digits = 0;
  for (; digits < text.size() && text[digits] >= '0' && text[digits] <= '9'; ++digits, weight /= 10)
    fraction += (text[digits] - '0') * weight;
  text.remove_prefix(digits);
  return digits > 0 ? std::optional(fraction) : std::nullopt;
}

// Reads "Z", an empty text, or how far the clock is ahead of UTC. Nothing for anything else.
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

std::string ReadGpx(const NextPart& nextPart, Recording& recording, std::size_t maxPoints) {
  GpxEvents events(recording, maxPoints);
  XmlStream xml(events);
  bool goesOn = true;
  for (std::string_view part = nextPart(); goesOn && !part.empty(); part = nextPart())
    goesOn = xml.Take(part);
  if (goesOn) xml.Finish();
  return events.Error().empty() ? xml.Error() : events.Error();
}

}  // namespace pallomir::station
