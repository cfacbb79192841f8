#include "window/focus_holder.h"

namespace pallomir {

FocusHolder::FocusHolder(FrameView& view, EventLoop& loop)
    : view_(view), tmrFocusGetter_(loop.CreateTimer("tmrFocusGetter", 250, [this] { Return(); })) {}

void FocusHolder::Open() { tmrFocusGetter_->SetEnabled(true); }

void FocusHolder::Close() {
  closed_ = true;
  tmrFocusGetter_->SetEnabled(false);
}

void FocusHolder::Return() {
  if (!closed_ && !held_) view_.ReturnFocus();
}

}  // namespace pallomir
