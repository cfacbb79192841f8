#pragma once

#include <string>

namespace pallomir {

/// The popup menu and the button that opens it. The main window implements it.
class MenuView {
 public:
  virtual ~MenuView() = default;
  enum class MenuPlace { kUnderButton, kAtPointer };
  virtual void PopUpMenu(MenuPlace place) = 0;
  virtual void SetMenuLabel(const std::string& text) = 0;  ///< `lblMenu`
};

}  // namespace pallomir
