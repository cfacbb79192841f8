#pragma once

#include <string>

#include "reports/data_file_reader.h"
#include "reports/unit_scan.h"

namespace pallomir {

/// Where in a search something happened. Numbers from 1 on.
struct SearchPlace {
  std::size_t unit = 0;       ///< which of the units asked for
  std::size_t file = 0;       ///< in order of names
  std::size_t fileCount = 0;  ///< of the unit
  std::string fileName;
};

/// The messages of what ends a search, in lines.
std::string FolderNotListed(int errorNumber);
std::string FileNotRead(DataFileReader::Outcome outcome, const DataFileReader& reader,
                        const SearchPlace& place);
std::string RecordsOutOfOrder(const UnitScan::Examined& examined, std::uint64_t recordsOfSearch,
                              std::size_t fileSize, const SearchPlace& place);

}  // namespace pallomir
