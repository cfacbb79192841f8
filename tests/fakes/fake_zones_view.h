#pragma once

#include <string>
#include <utility>

#include "zones/zones_view.h"

namespace pallomir::fakes {

/// Keeps what the zones room shows, and answers for the user.
class FakeZonesView : public ZonesView {
 public:
  void Execute(OptionsMode mode, const ZoneOptionsModel& model, OptionsAnswer then) override {
    asked = mode == OptionsMode::kAdd ? "Add" : "Mod";
    options = model.Options();
    answer = std::move(then);
  }
  void AskExportFile(FileAnswer then) override { exportAnswer = std::move(then); }
  void AskImportFile(FileAnswer then) override { importAnswer = std::move(then); }
  void AskAddOrReplace(const std::string& text, ImportAnswer then) override {
    importText = text;
    importChoice = std::move(then);
  }
  void ShowProgress(const std::string& text, int percent, std::function<void()> stop) override {
    progress = text + " " + std::to_string(percent);
    cancelProgress = std::move(stop);
  }
  void HideProgress() override { progress.clear(); }
  void ShowList(const ZoneListModel& model, ListActions does) override {
    list = &model;
    listActions = std::move(does);
  }
  void RefreshList() override { ++listRefreshes; }
  void ShowPath(const std::string& text) override { path = text; }
  void HidePath() override { path.clear(); }
  void Close() override { answer = {}; }

  /// Presses a button of the options dialog, with another name than it showed.
  void Press(const std::string& button, const std::string& name = "New") {
    options.Description = name;
    std::exchange(answer, {})(button, options);
  }

  std::string asked;
  ZoneOptions options;
  OptionsAnswer answer;
  FileAnswer exportAnswer;
  FileAnswer importAnswer;
  std::string importText;
  ImportAnswer importChoice;
  std::string progress;
  std::function<void()> cancelProgress;
  const ZoneListModel* list = nullptr;
  ListActions listActions;
  int listRefreshes = 0;
  std::string path;
};

}  // namespace pallomir::fakes
