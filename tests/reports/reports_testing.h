#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "fakes/temporary_folder.h"
#include "reports/data_file.h"

namespace pallomir {

inline const Millis kNoon = ToMillis({2026, 11, 22, 12, 0, 0});

inline std::uint32_t Second(std::int64_t afterNoon) {
  return EncodePackedTime(kNoon + afterNoon * kSecond).value_or(0);
}

/// A record some seconds after noon.
inline WireRecord RecordAt(std::int64_t second, std::int32_t latitude = 0, std::int32_t longitude = 0) {
  return {Second(second), latitude, longitude, 0};
}

inline std::string FileOf(const std::vector<WireRecord>& records) {
  Bytes bytes;
  for (const WireRecord& record : records) AppendFileRecord(bytes, record);
  return std::string(AsText(bytes));
}

/// A data folder of the test's own.
class DataFolder {
 public:
  const std::filesystem::path& Path() const { return folder_.Path(); }

  std::filesystem::path Write(const std::string& unit, const std::string& name,
                              const std::string& content) const {
    std::filesystem::create_directories(Path() / unit);
    fakes::WriteFile(Path() / unit / name, content);
    return Path() / unit / name;
  }

 private:
  fakes::TemporaryFolder folder_;
};

}  // namespace pallomir
