#pragma once

#include "reports/been_here.h"
#include "reports/visits_view.h"

namespace pallomir::fakes {

/// Keeps what is shown of the search for visits.
class FakeVisitsView : public VisitsView {
 public:
  void ShowBeenHere(BeenHere& shown, Actions toDo) override {
    search = &shown;
    actions = std::move(toDo);
  }
  void RefreshBeenHere() override { ++refreshes; }
  void AskVisitsFile(std::function<void(const std::filesystem::path&)> then) override { fileChosen = then; }
  void CloseBeenHere() override { search = nullptr; }

  BeenHere* search = nullptr;  // while the window is open
  Actions actions;
  int refreshes = 0;
  std::function<void(const std::filesystem::path&)> fileChosen;
};

}  // namespace pallomir::fakes
