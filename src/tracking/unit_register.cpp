#include "tracking/unit_register.h"

#include <utility>

namespace pallomir {

void UnitRegister::Load(bool demo) {
  areDemo_ = demo;
  if (!demo) stored_.Read();
  list_ = ParseMobileUnits(demo ? DemoMobileUnits() : stored_.Value());
  listChanged();
}

void UnitRegister::Enumerate() { book_ = EnumerateUnits(list_); }

void UnitRegister::ShowOnly(std::size_t i) {
  if (i == 0 || i > list_.size()) return;
  ChangeFlags([i](std::size_t at, bool) { return at == i; });
}

void UnitRegister::Toggle(std::size_t i) {
  if (i == 0 || i > list_.size()) return;
  ChangeFlags([i](std::size_t at, bool wasEnabled) { return at == i ? !wasEnabled : wasEnabled; });
}

void UnitRegister::ShowAll() {
  ChangeFlags([](std::size_t, bool) { return true; });
}

void UnitRegister::EnableForLoad(std::size_t i) {
  if (i == 0 || i > list_.size() || list_[i - 1].enabled) return;
  list_[i - 1].enabled = true;
  flagsChanged();
  Save();
}

template <class Flag>
void UnitRegister::ChangeFlags(Flag isEnabled) {
  for (std::size_t i = 1; i <= list_.size(); ++i) list_[i - 1].enabled = isEnabled(i, list_[i - 1].enabled);
  flagsChanged();
  Save();
  displayedChanged();
}

void UnitRegister::Apply(std::vector<MobileUnit> units) {
  list_ = std::move(units);
  listChanged();
  Save();
  Question question;
  question.kind = Question::Kind::kYesNo;
  question.icon = Question::Icon::kQuestion;
  question.title = "Pallomir";
  question.text = "Do you want to reload the map now?";
  questions_.Ask(question, [this](const Answer& answer) {
    if (answer.yes) displayedChanged();
  });
}

void UnitRegister::Save() {
  view_.ShowUnitFlags(list_);
  if (!areDemo_) stored_.Store(EncodeMobileUnits(list_));
}

void UnitRegister::TellNoneDisplayed(std::function<void()> then) {
  std::string text = "Note: none of the defined mobile units are enabled";
  if (list_.empty()) text = "Warning: no mobile unit(s) defined";
  if (list_.size() == 1) text = "Note: the mobile unit is not enabled";
  questions_.Tell(text, "pallomir",
                  list_.empty() ? Question::Icon::kExclamation : Question::Icon::kInformation,
                  [then = std::move(then)](const Answer&) { then(); });
}

}  // namespace pallomir
