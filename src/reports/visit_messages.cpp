#include "reports/visit_messages.h"

#include "base/number_format.h"

namespace pallomir {
namespace {

std::string NotOpened(int errorNumber, std::size_t fileCount) {
  return "Error 853451: CreateFile failed\nNumber " + std::to_string(errorNumber) +
         "\nFileCount_In(J) = " + std::to_string(fileCount);
}

std::string Hex(std::uint32_t time) { return HexDigits(time, 8); }

}  // namespace

std::string FolderNotListed(int errorNumber) { return NotOpened(errorNumber, 0); }

std::string FileNotRead(DataFileReader::Outcome outcome, const DataFileReader& reader,
                        const SearchPlace& place) {
  switch (outcome) {
    case DataFileReader::Outcome::kCorrupted:
      return "Error 65387: Corrupted file -- " + place.fileName;
    case DataFileReader::Outcome::kSizeChanged:
      return "Error 195634: String size does not match file size\nFile size = " +
             std::to_string(reader.FileSize()) +
             "\nReturned string size = " + std::to_string(reader.BytesRead());
    case DataFileReader::Outcome::kNotRead:
      return "Error 853452: ReadFile failed -- Error Number " + std::to_string(reader.ErrorNumber()) +
             "\nJ = " + std::to_string(place.unit) + "\n, KI = " + std::to_string(place.file) +
             "\nFileCount_In(J) = " + std::to_string(place.fileCount) +
             "\nDataFileName(J,KI) = " + place.fileName;
    case DataFileReader::Outcome::kGone:
    case DataFileReader::Outcome::kNotOpened:
      return NotOpened(reader.ErrorNumber(), place.fileCount);
    case DataFileReader::Outcome::kRead:
    case DataFileReader::Outcome::kNoFile:
      break;
  }
  return {};
}

std::string RecordsOutOfOrder(const UnitScan::Examined& examined, std::uint64_t recordsOfSearch,
                              std::size_t fileSize, const SearchPlace& place) {
  return "Error 776143: DP_Count = " + std::to_string(recordsOfSearch) + "\nprevious time (" +
         Hex(examined.previous) + ") less than current time (" + Hex(examined.time) +
         ")\nJ = " + std::to_string(place.unit) + ", KO = " + std::to_string(place.file) +
         ", DataFileName = " + place.fileName +
         ", Ix(J) = " + std::to_string(examined.position / kRecordSize + 1) +
         "\nFile Size = " + std::to_string(fileSize) +
         ",       difference = " + std::to_string(examined.time - examined.previous);
}

}  // namespace pallomir
