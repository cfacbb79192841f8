#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "settings/choice.h"
#include "tracking/mobile_units.h"
#include "tracking/unit_view.h"
#include "ui/question_queue.h"

namespace pallomir {

/// The list of mobile units as the user keeps it, and the books of those that are displayed. A change of the
/// list is stored at once, but shows on map and timeline only after Enumerate: until then the books describe
/// the list before it.
class UnitRegister {
 public:
  /// `stored` keeps the user's own list.
  UnitRegister(Choice<std::string>& stored, UnitView& view, QuestionQueue& questions)
      : stored_(stored), view_(view), questions_(questions) {}

  std::function<void()> listChanged;   ///< there are other units
  std::function<void()> flagsChanged;  ///< the same units, others of them enabled
  /// Another set of units is to be displayed: time to enumerate and to load their data.
  std::function<void()> displayedChanged;

  /// Reads the stored list, or takes the demo units. Those are never stored: changes last for this run.
  void Load(bool demo);
  bool AreDemo() const { return areDemo_; }

  /// Unit i of the list is element i - 1.
  const std::vector<MobileUnit>& List() const { return list_; }
  /// Of the last Enumerate.
  const UnitBook& Book() const { return book_; }
  void Enumerate();

  // What the user chooses. A unit i outside 1..List().size() is nobody's.
  void ShowOnly(std::size_t i);
  void Toggle(std::size_t i);
  void ShowAll();
  /// Enables unit i where it is not; a load of the data has to follow.
  void EnableForLoad(std::size_t i);

  /// Opens the editor.
  void Edit() { view_.EditUnits(list_); }
  /// The editor's Apply; asks whether to reload.
  void Apply(std::vector<MobileUnit> units);

  /// Tells that no unit is displayed, and why; `then` follows the answer.
  void TellNoneDisplayed(std::function<void()> then);

 private:
  template <class Flag>
  void ChangeFlags(Flag isEnabled);
  void Save();

  Choice<std::string>& stored_;
  UnitView& view_;
  QuestionQueue& questions_;
  bool areDemo_ = false;
  std::vector<MobileUnit> list_;
  UnitBook book_;
};

}  // namespace pallomir
