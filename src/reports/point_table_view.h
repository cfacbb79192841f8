#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>

#include "reports/point_table.h"

namespace pallomir {

/// The window of the data point tables, and how it asks for a file. The skin implements it; tests record it.
class PointTableView {
 public:
  /// What the user does there. Rows count from 0.
  struct Actions {
    std::function<void(std::size_t row)> hovered;  ///< by the pointer, or walked to by keys
    std::function<void(std::size_t row)> chosen;   ///< by a double-click or Enter
    std::function<void()> save;
    std::function<void()> closed;
  };

  virtual ~PointTableView() = default;
  /// Opens the window without giving it the keyboard. None is open.
  virtual void ShowPointTable(const PointTable& table, Actions actions) = 0;
  /// The address of the clicked place, `lblReverseGeoCode`. It is empty in a window that has just opened.
  virtual void ShowAddress(const std::string& address) = 0;
  virtual void ClosePointTable() = 0;
  /// Asks for the name of a CSV file; nothing is called when the user cancels. A file of that name may exist.
  virtual void AskCsvFile(std::function<void(const std::filesystem::path&)> then) = 0;
};

}  // namespace pallomir
