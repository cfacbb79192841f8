#include "zones/zone_tree.h"

#include <algorithm>
#include <cassert>
#include <charconv>
#include <utility>

namespace pallomir {

const char* NameOf(ZoneKind kind) { return kind == ZoneKind::kAlerted ? "Alerted" : "Non-Alert"; }

ZoneKind OtherKind(ZoneKind kind) {
  return kind == ZoneKind::kAlerted ? ZoneKind::kNonAlert : ZoneKind::kAlerted;
}

void ZoneBounds::Widen(const ZoneVertex& vertex) {
  minLat = std::min(minLat, vertex.lat);
  maxLat = std::max(maxLat, vertex.lat);
  minLng = std::min(minLng, vertex.lng);
  maxLng = std::max(maxLng, vertex.lng);
}

std::span<const ZoneVertex> ZoneTree::VerticesOf(ZoneOrdinal zone) const {
  const Node& node = nodes_[zone];
  return std::span(vertices_).subspan(node.firstVertex, node.vertexCount);
}

ZoneContent ZoneTree::ContentOf(ZoneOrdinal zone) const {
  const auto vertices = VerticesOf(zone);
  return {nodes_[zone].options, {vertices.begin(), vertices.end()}};
}

ZoneKind ZoneTree::KindAt(int depth) const {
  return depth % 2 == 1 ? topLevelKind_ : OtherKind(topLevelKind_);
}

std::vector<ZoneOrdinal> ZoneTree::ChildrenOf(ZoneOrdinal zone) const {
  const bool isRoot = zone == kNone;
  const ZoneOrdinal end = isRoot ? Count() : nodes_[zone].subtreeEnd;
  std::vector<ZoneOrdinal> children;
  for (ZoneOrdinal child = isRoot ? 0 : zone + 1; child < end; child = nodes_[child].subtreeEnd)
    children.push_back(child);
  return children;
}

std::string ZoneTree::Section(ZoneOrdinal zone) const {
  std::vector<std::uint32_t> numbers;
  for (; zone != kNone; zone = nodes_[zone].parent) numbers.push_back(nodes_[zone].number);
  std::string section;
  for (auto number = numbers.rbegin(); number != numbers.rend(); ++number) {
    if (!section.empty()) section += '.';
    section += std::to_string(*number);
  }
  return section;
}

std::optional<ZoneOrdinal> ZoneTree::WithSection(std::string_view section) const {
  ZoneOrdinal zone = kNone;
  if (section.ends_with('.')) return std::nullopt;
  do {
    const std::string_view text = section.substr(0, section.find('.'));
    section.remove_prefix(std::min(section.size(), text.size() + 1));
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || text.starts_with('0'))
      return std::nullopt;
    ZoneOrdinal child = zone == kNone ? 0 : zone + 1;
    const ZoneOrdinal last = zone == kNone ? Count() : nodes_[zone].subtreeEnd;
    while (child < last && nodes_[child].number != number) child = nodes_[child].subtreeEnd;
    if (child >= last) return std::nullopt;
    zone = child;
  } while (!section.empty());
  return zone;
}

bool ZoneTree::operator==(const ZoneTree& other) const {
  if (topLevelKind_ != other.topLevelKind_ || vertices_ != other.vertices_) return false;
  return std::ranges::equal(nodes_, other.nodes_, [](const Node& a, const Node& b) {
    return a.depth == b.depth && a.vertexCount == b.vertexCount && a.options == b.options;
  });
}

ZoneTreeBuilder::ZoneTreeBuilder(ZoneKind topLevelKind) { tree_.topLevelKind_ = topLevelKind; }

bool ZoneTreeBuilder::Takes(int depth) const {
  return depth >= 1 && static_cast<std::size_t>(depth) <= open_.size() + 1;
}

void ZoneTreeBuilder::CloseFrom(int depth) {
  while (open_.size() >= static_cast<std::size_t>(depth)) {
    tree_.nodes_[open_.back()].subtreeEnd = tree_.Count();
    open_.pop_back();
    childCounts_.pop_back();
  }
}

void ZoneTreeBuilder::Begin(int depth, ZoneOptions options) {
  assert(Takes(depth));
  CloseFrom(depth);
  ZoneTree::Node& node = tree_.nodes_.emplace_back();
  node.depth = depth;
  node.number = ++childCounts_.back();
  node.parent = open_.empty() ? ZoneTree::kNone : open_.back();
  node.firstVertex = static_cast<std::uint32_t>(tree_.vertices_.size());
  node.options = std::move(options);
  open_.push_back(tree_.Count() - 1);
  childCounts_.push_back(0);
}

void ZoneTreeBuilder::Add(const ZoneVertex& vertex) {
  ZoneTree::Node& node = tree_.nodes_.back();
  ++node.vertexCount;
  node.bounds.Widen(vertex);
  tree_.vertices_.push_back(vertex);
}

void ZoneTreeBuilder::DropLast() {
  assert(!open_.empty() && open_.back() == tree_.Count() - 1);
  tree_.vertices_.resize(tree_.nodes_.back().firstVertex);
  tree_.nodes_.pop_back();
  open_.pop_back();
  childCounts_.pop_back();
  --childCounts_.back();
}

void ZoneTreeBuilder::Append(int depth, const ZoneOptions& options, std::span<const ZoneVertex> vertices) {
  Begin(depth, options);
  for (const ZoneVertex& vertex : vertices) Add(vertex);
}

ZoneTree ZoneTreeBuilder::Build() {
  CloseFrom(1);
  return std::exchange(tree_, {});
}

}  // namespace pallomir
