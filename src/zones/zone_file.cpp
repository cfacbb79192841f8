#include "zones/zone_file.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "zones/zone_fields.h"

namespace pallomir {
namespace {

/// Reads the records one after the other until the file ends or a field is not what it should be.
class ZoneReader {
 public:
  explicit ZoneReader(std::string_view file) : fields_(file) {}

  ZoneFileContent Read() {
    const auto kind = fields_.Text();
    if (!kind) return {{}, ZoneFileDamage{1, "holds nothing"}, {}};
    ZoneTreeBuilder builder(*kind == NameOf(ZoneKind::kAlerted) ? ZoneKind::kAlerted : ZoneKind::kNonAlert);
    while (!damage_ && !illegalDepth_ && !fields_.AtEnd()) ReadRecord(builder);
    return {builder.Build(), damage_, illegalDepth_};
  }

 private:
  void ReadRecord(ZoneTreeBuilder& builder) {
    fields_.Text();  // always 1
    const auto depth = fields_.Integer();
    if (!depth) return Damaged("has no nesting depth of a zone");
    ZoneOptions options;
    for (std::string* text :
         {&options.Spare, &options.Description, &options.DaysOfWeek, &options.StartTime, &options.EndTime}) {
      const auto field = fields_.Text();
      if (!field) return Damaged("ends within a zone");
      text->assign(*field);
    }
    if (!builder.Takes(*depth)) {
      illegalDepth_ = *depth;
      return;
    }
    builder.Begin(*depth, std::move(options));
    if (fields_.AtEnd()) return;
    while (!damage_ && ReadVertex(builder)) {
    }
    if (damage_) builder.DropLast();
  }

  // Whether another corner follows.
  bool ReadVertex(ZoneTreeBuilder& builder) {
    constexpr double kPole = 90, kDateLine = 180;
    const auto more = fields_.Integer();
    if (!more) return Damaged("does not say whether another corner follows"), false;
    const auto lat = fields_.Number();
    if (!lat || !(std::abs(*lat) <= kPole)) return Damaged("has no latitude from -90 to 90"), false;
    const auto lng = fields_.Number();
    if (!lng || !(std::abs(*lng) <= kDateLine)) return Damaged("has no longitude from -180 to 180"), false;
    builder.Add({*lat, *lng});
    return *more != 0;
  }

  void Damaged(const char* what) { damage_ = ZoneFileDamage{fields_.Line(), what}; }

  ZoneFields fields_;
  std::optional<ZoneFileDamage> damage_;
  std::optional<int> illegalDepth_;
};

void AppendNumber(std::string& text, double value) {
  char digits[400];  // the smallest double has 324 zeros behind the point
  const auto end = std::to_chars(digits, std::end(digits), value + 0.0, std::chars_format::fixed).ptr;
  text.append(digits, end);
}

void AppendVertex(std::string& text, const ZoneVertex& vertex, bool isLast) {
  text += isLast ? "0," : "1,";
  AppendNumber(text, vertex.lat);
  text += ',';
  AppendNumber(text, vertex.lng);
  text += "\r\n";
}

void AppendText(std::string& text, std::string_view field) {
  text += ",\"";
  text.append(field);
  std::replace(text.end() - static_cast<std::ptrdiff_t>(field.size()), text.end(), '"', '\'');
  text += '"';
}

}  // namespace

ZoneFileContent ReadZones(std::string_view file) { return ZoneReader(file).Read(); }

std::string WriteZones(const ZoneTree& tree) {
  std::string text = '"' + std::string(NameOf(tree.TopLevelKind())) + "\"\r\n";
  for (ZoneOrdinal zone = 0; zone < tree.Count(); ++zone) {
    const ZoneOptions& options = tree.At(zone).options;
    text += "1," + std::to_string(tree.At(zone).depth);
    for (const std::string* field :
         {&options.Spare, &options.Description, &options.DaysOfWeek, &options.StartTime, &options.EndTime})
      AppendText(text, *field);
    text += "\r\n";
    const auto vertices = tree.VerticesOf(zone);
    for (const ZoneVertex& vertex : vertices) AppendVertex(text, vertex, &vertex == &vertices.back());
    // Only the last record may go without a corner: one that encloses nothing stands in.
    if (vertices.empty() && zone + 1 < tree.Count()) AppendVertex(text, {}, true);
  }
  return text;
}

}  // namespace pallomir
