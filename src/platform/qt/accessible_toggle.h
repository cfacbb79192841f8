#pragma once

namespace pallomir {

/// Lets assistive programs know every checkable menu entry as a check box: by itself the toolkit tells them
/// of a mark that is there, but not of one that could be.
void AnnounceToggles();

}  // namespace pallomir
