#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "base/file_stamp.h"
#include "reports/data_file.h"
#include "reports/search_area.h"

namespace pallomir {

/// What is kept of a data file in an index: where its records lie, so that a search need not read it.
struct FileSummary {
  /// Around so many records, one after the other, a box lies.
  static constexpr std::size_t kRecordsPerBox = 32;

  FileStamp stamp;          ///< of the content that this is of
  std::uint32_t first = 0;  ///< times of the first and the last record; they descend nowhere
  std::uint32_t last = 0;
  std::vector<PositionBox> boxes;  ///< as many as its records need

  bool Meets(const PositionBox& box) const;
  std::size_t RecordCount() const { return stamp.size / kRecordSize; }
  bool operator==(const FileSummary&) const = default;
};

/// Nothing for a file without records, or with times that descend: such a one has to be read.
std::optional<FileSummary> Summarise(ByteView file, const FileStamp& stamp);

/// The summaries of a unit's files by their names. They are a help and nothing else: one that is missing, or
/// does not fit its file, makes the file be read.
using FileSummaries = std::map<std::string, FileSummary, std::less<>>;

/// As they are kept in a file. What is damaged reads as none at all.
std::string EncodeSummaries(const FileSummaries& summaries);
FileSummaries DecodeSummaries(std::string_view text);

/// Beside the units' folders, where it is no data file.
std::filesystem::path SummariesFile(const std::filesystem::path& dataFolder, std::string_view unitId);
FileSummaries ReadSummaries(const std::filesystem::path& dataFolder, std::string_view unitId);

/// Makes the summaries of the unit's files anew, where they changed, and stores them. Who calls it keeps
/// others from changing the folder. A failure leaves no summaries or older ones, both of which are right.
void StoreSummaries(const std::filesystem::path& dataFolder, std::string_view unitId);

}  // namespace pallomir
