#include "zones/zone_list_sender.h"

#include <algorithm>
#include <utility>

#include "map/page_fields.h"
#include "zones/zone_payload.h"

namespace pallomir {
namespace {

// What goes out between two looks at the events: a write costs the browser about as much as 2,000 characters.
constexpr std::size_t kMostCharacters = 64'000;
constexpr std::size_t kCharactersOfWrite = 2'000;
constexpr ZoneOrdinal kNamesOfWrite = 200;

// The page's names are a line each, and no line is endless.
std::string NameLine(const ZoneTree& tree, ZoneOrdinal zone) {
  constexpr std::size_t kLongestSection = 200, kLongestName = 400;
  const int depth = tree.At(zone).depth;
  std::string section = depth < static_cast<int>(kLongestSection) / 2 ? tree.Section(zone) : std::string();
  // "0" begins no section: a deep zone's last number must not pass for one of the top level.
  if (section.size() > kLongestSection || section.empty())
    section = "0." + std::to_string(tree.At(zone).number);
  std::string name = tree.At(zone).options.Description.substr(0, kLongestName);
  std::ranges::replace_if(
      name, [](char c) { return c == '\n' || c == '\r'; }, ' ');
  return section + ' ' + name + '\n';
}

}  // namespace

ZoneListSender::ZoneListSender(EventLoop& loop, const ZoneTree& tree, Write write)
    : tree_(tree),
      write_(std::move(write)),
      timer_(loop.CreateTimer("ZoneList", 0, [this] { SendPart(); })) {}

void ZoneListSender::Start() {
  nextZone_ = nextName_ = 0;
  write_(field::kZoneList, "*");
  timer_->SetEnabled(true);
  SendPart();
}

void ZoneListSender::Finish() {
  while (IsSending()) SendPart();
}

void ZoneListSender::Stop() { timer_->SetEnabled(false); }

void ZoneListSender::SendPart() {
  std::size_t characters = 0;
  while (nextZone_ < tree_.Count() && characters < kMostCharacters) {
    const std::string payload = ZonePayload(tree_, nextZone_++);
    characters += payload.size() + kCharactersOfWrite;
    write_(field::kZoneList, payload);
  }
  if (nextZone_ == tree_.Count() && characters < kMostCharacters && nextName_ < tree_.Count()) SendNames();
  if (nextName_ == tree_.Count()) Stop();
}

void ZoneListSender::SendNames() {
  std::string names;
  const ZoneOrdinal end = std::min(tree_.Count(), nextName_ + kNamesOfWrite);
  for (; nextName_ < end; ++nextName_) names += NameLine(tree_, nextName_);
  write_(field::kZoneNames, names);
}

}  // namespace pallomir
