#include "shell/hot_keys.h"

#include <algorithm>
#include <array>

namespace pallomir {
namespace {

using Command = std::optional<KeyCommand>;

/// A line of the key list; place 0 stands for none.
struct ListLine {
  int place = 0;
  const char* hotKey = "";
  const char* function = "";
};

/// A key with three columns that know nothing of each other: what it does, what the keyboard picture says
/// about it, what the key list says.
struct Row {
  char key;                        // '\0': the key has no action under any modifier
  std::array<Command, 4> actions;  // by modifier mask: none, Shift, Ctrl, both
  const char* caption;
  const char* description;
  std::array<ListLine, 4> lines;
};

constexpr const char* kDigitText =
    "N: Display only mobile unit #N\r\n"
    "\r\n"
    "<shift>N: Toggle display of mobile unit #N\r\n"
    "\r\n"
    "<ctrl>N: Move time interval back N intervals\r\n"
    "\r\n"
    "<ctrl><shift>N: Move time interval forward N intervals";

// The key list speaks of all digits at once.
constexpr std::array<ListLine, 4> kDigitLines = {{
    {1, "1-9", "Display only mobile unit #N "},
    {2, "<Shift>1-9", "Toggle display of mobile unit #N"},
    {3, "<Ctrl>1-9", "Move time interval back N periods "},
    {4, "<Ctrl><Shift>", "Move time interval forward N periods "},
}};

constexpr Row Silent(const char* caption) { return {'\0', {}, caption, "", {}}; }

/// A key with an action when pressed alone.
constexpr Row Plain(const char* caption, KeyCommand command, const char* description, int place,
                    const char* function) {
  return {caption[0], {command}, caption, description, {{{place, caption, function}}}};
}

constexpr Row Digit(const char* caption, const std::array<ListLine, 4>& lines = {}) {
  const int n = caption[0] - '0';
  return {caption[0],
          {KeyCommand{KeyAction::kShowOnlyUnit, n}, KeyCommand{KeyAction::kToggleUnit, n},
           KeyCommand{KeyAction::kBack, n}, KeyCommand{KeyAction::kForward, n}},
          caption,
          kDigitText,
          lines};
}

// In the order of the help table.
constexpr Row kRows[] = {
    Plain("A", {KeyAction::kShowAllUnits}, "Display all mobile units", 5, "Display all mobile units "),
    Silent("B"),
    Plain("C", {KeyAction::kStreetViewOverlay}, "Toggle StreetView map overlay", 6,
          "Toggle StreetView map overlay"),
    Silent("D"),
    Silent("E"),
    Plain("F", {KeyAction::kFitAll}, "Fit map to all mobile units", 7, "Fit map to all mobile units"),
    Silent("G"),
    Plain("H", {KeyAction::kMapType, 3}, "Display \"hybrid view\" of map", 8,
          "Display \"hybrid view\" of map "),
    Plain("I", {KeyAction::kZoomIn}, "Zoom in (in time) to 1/3 the interval", 9,
          "Zoom in (in time) to 1/3 the interval"),
    Silent("J"),
    Silent("K"),
    Silent("L"),
    {'M',
     {KeyCommand{KeyAction::kMapType, 1}, {}, KeyCommand{KeyAction::kToggleMapData}},
     "M",
     "Display \"map view\" of map",
     {{{10, "M", "Display \"map view\" of map "}}}},
    Plain("N", {KeyAction::kNearby}, "Display nearby datapoints table", 11,
          "Display nearby datapoints table "),
    Plain("O", {KeyAction::kZoomOut}, "Zoom out (in time) to 3x the interval", 12,
          "Zoom out (in time) to 3x the interval"),
    Plain("P", {KeyAction::kMaxSpeed}, "Display max speed table", 13, "Display max speed table "),
    Silent("Q"),
    Plain("R", {KeyAction::kReload}, "Reload current data", 14, "Reload current data"),
    Plain("S", {KeyAction::kMapType, 2}, "Display \"satellite view\" of map", 15,
          "Display \"satellite view\" of map "),
    {'T',
     {KeyCommand{KeyAction::kMapType, 4}, {}, KeyCommand{KeyAction::kToggleTrackingData}},
     "T",
     "Toggle tracking data visibility",
     {{{16, "<Ctrl>T", "Toggle tracking data visibility "}}}},
    Silent("U"),
    Plain("V", {KeyAction::kPanorama}, "Toggle StreetView 360º Panorama", 17,
          "Toggle StreetView 360º Panorama"),
    Silent("W"),
    Plain("X", {KeyAction::kCurrentDay}, "Return to current day, 24-hr display", 19,
          "Return to current day, 24-hr display "),
    Silent("Y"),
    {'Z',
     {{{}, {}, KeyCommand{KeyAction::kToggleZones}}},
     "Z",
     "Toggle alert zones visibility",
     {{{18, "<Ctrl>Z", "Toggle alert zones visibility "}}}},
    {'0',
     {KeyCommand{KeyAction::kShowAllUnits}, KeyCommand{KeyAction::kShowAllUnits}},
     "0",
     "Display all mobile units",
     {}},
    Digit("1", kDigitLines),
    Digit("2"),
    Digit("3"),
    Digit("4"),
    Digit("5"),
    Digit("6"),
    Digit("7"),
    Digit("8"),
    Digit("9"),
    Silent("`"),
    Silent("-"),
    Silent("="),
    Plain("[", {KeyAction::kBack, 1}, "Move time interval back 1 period", 21,
          "Move time interval back 1 period "),
    Plain("]", {KeyAction::kForward, 1}, "Move time interval forward 1 period", 20,
          "Move time interval forward 1 period "),
    Silent("\\"),
    Silent(";"),
    Silent("'"),
    Silent(","),
    Silent("."),
    Silent("/"),
    Silent("space"),
    Silent("ctl"),
    Silent("alt"),
    Silent("shft"),
    Silent("caps"),
    Silent("tab"),
    Silent("cr"),
    Silent("bk"),
};

bool NeedsUnit(KeyAction action) {
  return action == KeyAction::kShowOnlyUnit || action == KeyAction::kToggleUnit;
}

void AppendLine(std::string& column, const char* line) {
  if (!column.empty()) column += "\r\n";
  column += line;
}

}  // namespace

std::optional<KeyCommand> FindKeyCommand(int modifiers, char key, int unitCount) {
  if (key == '\0' || modifiers < 0 || modifiers > (kShift | kCtrl)) return std::nullopt;
  const Row* row = std::ranges::find(kRows, key, &Row::key);
  if (row == std::end(kRows)) return std::nullopt;
  const Command& command = row->actions[static_cast<std::size_t>(modifiers)];
  if (command && NeedsUnit(command->action) && command->number > unitCount) return std::nullopt;
  return command;
}

std::vector<std::string_view> KeyCaptions() {
  std::vector<std::string_view> captions;
  for (const Row& row : kRows) captions.emplace_back(row.caption);
  return captions;
}

std::string_view KeyDescription(std::string_view caption) {
  const Row* row = std::ranges::find(kRows, caption, &Row::caption);
  return row == std::end(kRows) ? "" : row->description;
}

KeyListText KeyList() {
  std::vector<ListLine> lines;
  for (const Row& row : kRows) {
    std::ranges::copy_if(row.lines, std::back_inserter(lines),
                         [](const ListLine& l) { return l.place != 0; });
  }
  std::ranges::sort(lines, {}, &ListLine::place);
  KeyListText text;
  for (const ListLine& line : lines) {
    AppendLine(text.hotKeys, line.hotKey);
    AppendLine(text.functions, line.function);
  }
  return text;
}

}  // namespace pallomir
