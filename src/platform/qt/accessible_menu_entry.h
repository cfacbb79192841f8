#pragma once

namespace pallomir {

/// Tells assistive programs of menu entries what the toolkit leaves out: that an entry can have a check mark,
/// where it has none now, and that what stands behind its name is a key.
void AnnounceMenuEntries();

}  // namespace pallomir
