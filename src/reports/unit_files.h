#pragma once

#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "base/file_stamp.h"

namespace pallomir {

/// The folder of a unit's data files: the names of its plain files, bytewise ascending, as they were when it
/// was listed. Folders, pipes, sockets and devices are left out.
class UnitFiles {
 public:
  explicit UnitFiles(std::filesystem::path folder) : folder_(std::move(folder)) {}
  ~UnitFiles() { Close(); }
  UnitFiles(const UnitFiles&) = delete;
  UnitFiles& operator=(const UnitFiles&) = delete;

  /// Lists the folder, anew if it was before. A missing one counts as empty.
  std::error_code List();

  /// Opens the folder for reading its files; lists it anew if that has changed what is in it meanwhile.
  std::error_code Open();
  void Close();

  const std::vector<std::string>& Names() const { return names_; }
  int Descriptor() const { return descriptor_; }

 private:
  std::error_code OpenFolder();
  std::error_code ListOpened();

  std::filesystem::path folder_;
  std::vector<std::string> names_;
  FileStamp listed_;  // differs from the next where the folder's files are others now
  FileStamp opened_;
  int descriptor_ = -1;
};

}  // namespace pallomir
