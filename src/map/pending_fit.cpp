#include "map/pending_fit.h"

namespace pallomir {

bool PendingFit::IsFirstSent() const {
  return std::holds_alternative<fit::WhenDrawn>(state_) || std::holds_alternative<fit::None>(state_);
}

bool PendingFit::IsBeingDrawn() const {
  if (const auto* before = std::get_if<fit::BeforeData>(&state_)) return before->isBeingDrawn;
  return std::holds_alternative<fit::FirstWhenDrawn>(state_) ||
         std::holds_alternative<fit::WhenDrawn>(state_);
}

void PendingFit::Ask(const WorldBox& box) {
  if (HasData()) return AskForData(box);
  state_ = fit::BeforeData{true};
}

void PendingFit::AskForData(const WorldBox& box) {
  if (IsFirstSent()) {
    state_ = fit::WhenDrawn{box};
  } else {
    state_ = fit::FirstWhenDrawn{box};
  }
}

bool PendingFit::Redirect(const WorldBox& box) {
  if (!HasData() || !IsBeingDrawn()) return false;
  AskForData(box);
  return true;
}

std::optional<PendingFit::Due> PendingFit::Drawn(bool isMapCreated) {
  if (auto* before = std::get_if<fit::BeforeData>(&state_)) before->isBeingDrawn = false;
  if (const auto* later = std::get_if<fit::WhenDrawn>(&state_)) {
    const WorldBox box = later->box;
    state_ = fit::None{};
    return Due{false, box};
  }
  if (const auto* first = std::get_if<fit::FirstWhenDrawn>(&state_)) {
    const WorldBox box = first->box;
    if (isMapCreated) {
      state_ = fit::None{};
      return Due{true, box};
    }
    state_ = fit::FirstWhenCreated{box};
  }
  return std::nullopt;
}

std::optional<WorldBox> PendingFit::MapCreated() {
  const auto* waiting = std::get_if<fit::FirstWhenCreated>(&state_);
  if (!waiting) return std::nullopt;
  const WorldBox box = waiting->box;
  state_ = fit::None{};
  return box;
}

void PendingFit::PageLost(const WorldBox& shown) {
  if (const auto* later = std::get_if<fit::WhenDrawn>(&state_)) {
    state_ = fit::FirstWhenDrawn{WorldBox(later->box)};
  } else if (std::holds_alternative<fit::None>(state_)) {
    state_ = fit::FirstWhenCreated{shown};
  }
}

}  // namespace pallomir
