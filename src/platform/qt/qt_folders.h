#pragma once

#include "platform/folders.h"

namespace pallomir {

/// The folders of this user and this executable, from the environment; the common one is created. Needs the
/// application object.
Folders SystemFolders();

}  // namespace pallomir
