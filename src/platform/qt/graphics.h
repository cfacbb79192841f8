#pragma once

namespace pallomir {

/// Has the window composed in plain memory where no graphics processor is to be had, unless the user's
/// environment says how (QT_QUICK_BACKEND). Without this a graphics library imitates one, which paints
/// several times as slowly. To be called between the application object and the first window.
void ChooseGraphics();

}  // namespace pallomir
