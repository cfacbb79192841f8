#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

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
  /// Differs when something came into the folder or left it, or another folder stands in its place.
  struct Stamp {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;
    bool operator==(const Stamp&) const = default;
  };

  std::error_code OpenFolder();
  std::error_code ListOpened();

  std::filesystem::path folder_;
  std::vector<std::string> names_;
  Stamp listed_;
  Stamp opened_;
  int descriptor_ = -1;
};

}  // namespace pallomir
