#pragma once

#include <optional>

#include "reports/point_table_view.h"

namespace pallomir::fakes {

/// Keeps what is shown of the data point tables.
class FakePointTableView : public PointTableView {
 public:
  void ShowPointTable(const PointTable& shown, Actions toDo) override {
    table = shown;
    actions = std::move(toDo);
    address.clear();
  }
  void ShowAddress(const std::string& text) override { address = text; }
  void ClosePointTable() override { table.reset(); }
  void AskCsvFile(std::function<void(const std::filesystem::path&)> then) override { fileChosen = then; }

  std::optional<PointTable> table;  // while the window is open
  Actions actions;
  std::string address;
  std::function<void(const std::filesystem::path&)> fileChosen;
};

}  // namespace pallomir::fakes
