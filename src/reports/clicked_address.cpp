#include "reports/clicked_address.h"

#include <utility>

namespace pallomir {

void ClickedAddress::Ask(const void* who, Then then) {
  form_.AskForAddress();
  ++asked_;
  if (isClicked_) waiting_[who] = std::move(then);
}

void ClickedAddress::OnClick() {
  isClicked_ = true;
  olderAsked_ += std::exchange(asked_, 0);
  waiting_.clear();
}

void ClickedAddress::OnAnswer(const std::string& address) {
  if (olderAsked_ > 0) {
    --olderAsked_;
    return;
  }
  if (asked_ > 0) --asked_;
  for (const auto& [who, then] : std::exchange(waiting_, {})) then(address);
}

// What was asked before there was a page to answer will not be answered.
void ClickedAddress::OnPageReady() {
  if (!isClicked_) asked_ = 0;
}

void ClickedAddress::OnPageLost() {
  isClicked_ = false;
  asked_ = olderAsked_ = 0;
  waiting_.clear();
}

}  // namespace pallomir
