#pragma once

#include <filesystem>
#include <functional>

namespace pallomir {

class BeenHere;

/// The window of the search for visits.
class VisitsView {
 public:
  virtual ~VisitsView() = default;

  /// What is done in the window beside the search itself.
  struct Actions {
    std::function<void()> save;    ///< the visits found, as CSV
    std::function<void()> closed;  ///< the user has closed the window
  };
  /// `formBeenHere`, modeless, with the keyboard; one that is open comes forward and shows the new place. The
  /// search outlives it.
  virtual void ShowBeenHere(BeenHere& search, Actions actions) = 0;
  /// What is found, or how far the search is, has changed.
  virtual void RefreshBeenHere() = 0;
  /// The file that the user chose; there is no answer when none was.
  virtual void AskVisitsFile(std::function<void(const std::filesystem::path&)> then) = 0;
  /// Takes the window away.
  virtual void CloseBeenHere() = 0;
};

}  // namespace pallomir
