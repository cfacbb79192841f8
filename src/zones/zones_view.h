#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "zones/zone_list_model.h"
#include "zones/zone_options_model.h"

namespace pallomir {

/// The windows of this room.
class ZonesView {
 public:
  virtual ~ZonesView() = default;
  enum class OptionsMode { kAdd, kMod };
  /// The text of the button that closed the dialog, "Edit Shape" or "Cancel", or nothing; and the choices.
  using OptionsAnswer = std::function<void(const std::string& button, const ZoneOptions& options)>;
  /// `formZoneOptions`. The answer comes from the event loop, exactly once unless the window closes for good.
  virtual void Execute(OptionsMode mode, const ZoneOptionsModel& model, OptionsAnswer then) = 0;
  /// The file that the user chose; there is no answer when none was.
  using FileAnswer = std::function<void(const std::filesystem::path& file)>;
  virtual void AskExportFile(FileAnswer then) = 0;
  virtual void AskImportFile(FileAnswer then) = 0;
  enum class ImportChoice { kCancel, kAdd, kReplace };
  using ImportAnswer = std::function<void(ImportChoice choice)>;
  virtual void AskAddOrReplace(const std::string& text, ImportAnswer then) = 0;
  /// How far long work is, in percent; `cancel` when the user wants it no more. Again for each step.
  virtual void ShowProgress(const std::string& text, int percent, std::function<void()> cancel) = 0;
  virtual void HideProgress() = 0;
  /// What is done with a zone of the list.
  struct ListActions {
    std::function<void(ZoneOrdinal)> zoom;
    std::function<void(ZoneOrdinal)> remove;
    std::function<void(ZoneOrdinal, const std::string& description)> rename;
  };
  /// `formZoneList`, modeless; one that is open comes forward. The model outlives it.
  virtual void ShowList(const ZoneListModel& model, ListActions actions) = 0;
  /// The list, or what can be done with it, is another one now.
  virtual void RefreshList() = 0;
  /// A line beside the pointer.
  virtual void ShowPath(const std::string& path) = 0;
  virtual void HidePath() = 0;
  /// Takes all windows away; none of them answers any more.
  virtual void Close() = 0;
};

}  // namespace pallomir
