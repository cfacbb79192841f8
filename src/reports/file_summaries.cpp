#include "reports/file_summaries.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>

#include "base/check_code.h"
#include "base/whole_file.h"
#include "reports/data_file_reader.h"
#include "reports/unit_files.h"

namespace pallomir {
namespace {

// Begins the file; another form of it has another one.
constexpr std::string_view kMark = "pallomir summaries 1\n";

// Of 90,000 full files, 65 million records; a unit with more is searched without.
constexpr std::size_t kMaxFileSize = 40 << 20;

std::size_t BoxesFor(std::size_t records) {
  return (records + FileSummary::kRecordsPerBox - 1) / FileSummary::kRecordsPerBox;
}

void Append64(Bytes& out, std::uint64_t value) {
  AppendBigEndian32(out, static_cast<std::uint32_t>(value >> 32));
  AppendBigEndian32(out, static_cast<std::uint32_t>(value));
}

void AppendSigned(Bytes& out, std::int32_t value) {
  AppendBigEndian32(out, static_cast<std::uint32_t>(value));
}

/// Takes fields from the front. Those that are not there are zero, and make it fail.
class Fields {
 public:
  explicit Fields(std::string_view text) : rest_(AsBytes(text)) {}

  std::uint32_t Word() {
    const ByteView bytes = Take(4);
    return bytes.empty() ? 0 : ReadBigEndian32(bytes, 0);
  }
  std::int32_t Signed() { return static_cast<std::int32_t>(Word()); }
  std::uint64_t Long() {
    const std::uint64_t high = Word();
    return high << 32 | Word();
  }
  ByteView Take(std::size_t size) {
    hasFailed_ |= size > rest_.size();
    if (hasFailed_) return {};
    const ByteView taken = rest_.first(size);
    rest_ = rest_.subspan(size);
    return taken;
  }
  bool HasFailed() const { return hasFailed_; }
  bool IsAtEnd() const { return rest_.empty(); }

 private:
  ByteView rest_;
  bool hasFailed_ = false;
};

void AppendSummary(Bytes& out, const std::string& name, const FileSummary& summary) {
  AppendBigEndian32(out, static_cast<std::uint32_t>(name.size()));
  Append(out, AsBytes(name));
  Append64(out, summary.stamp.inode);
  Append64(out, summary.stamp.size);
  Append64(out, static_cast<std::uint64_t>(summary.stamp.seconds));
  Append64(out, static_cast<std::uint64_t>(summary.stamp.nanoseconds));
  AppendBigEndian32(out, summary.first);
  AppendBigEndian32(out, summary.last);
  for (const PositionBox& box : summary.boxes)
    for (const std::int32_t side : {box.minLatitude, box.maxLatitude, box.minLongitude, box.maxLongitude})
      AppendSigned(out, side);
}

std::optional<FileSummary> TakeSummary(Fields& fields) {
  FileSummary summary;
  summary.stamp.inode = fields.Long();
  summary.stamp.size = fields.Long();
  summary.stamp.seconds = static_cast<std::int64_t>(fields.Long());
  summary.stamp.nanoseconds = static_cast<std::int64_t>(fields.Long());
  summary.first = fields.Word();
  summary.last = fields.Word();
  if (!IsDataFileSize(summary.stamp.size)) return std::nullopt;
  for (std::size_t left = BoxesFor(summary.RecordCount()); left > 0 && !fields.HasFailed(); --left) {
    PositionBox& box = summary.boxes.emplace_back();
    for (std::int32_t* side : {&box.minLatitude, &box.maxLatitude, &box.minLongitude, &box.maxLongitude})
      *side = fields.Signed();
  }
  return fields.HasFailed() ? std::nullopt : std::optional(std::move(summary));
}

}  // namespace

bool FileSummary::Meets(const PositionBox& box) const {
  return std::ranges::any_of(boxes, [&box](const PositionBox& each) { return each.Meets(box); });
}

std::optional<FileSummary> Summarise(ByteView file, const FileStamp& stamp) {
  if (file.empty()) return std::nullopt;
  FileSummary summary{stamp, FileRecordTime(file, 0), FileRecordTime(file, file.size() - kRecordSize), {}};
  std::uint32_t earlier = 0;
  for (std::size_t at = 0; at < file.size(); at += kRecordSize) {
    const std::uint32_t time = FileRecordTime(file, at);
    if (time < earlier) return std::nullopt;
    earlier = time;
    const std::int32_t latitude = FileRecordLatitude(file, at), longitude = FileRecordLongitude(file, at);
    if (at / kRecordSize % FileSummary::kRecordsPerBox == 0)
      summary.boxes.push_back({latitude, latitude, longitude, longitude});
    PositionBox& box = summary.boxes.back();
    box = {std::min(box.minLatitude, latitude), std::max(box.maxLatitude, latitude),
           std::min(box.minLongitude, longitude), std::max(box.maxLongitude, longitude)};
  }
  return summary;
}

std::string EncodeSummaries(const FileSummaries& summaries) {
  Bytes bytes;
  for (const auto& [name, summary] : summaries) AppendSummary(bytes, name, summary);
  return std::string(kMark).append(AsText(LongCheckForm(bytes))).append(AsText(bytes));
}

FileSummaries DecodeSummaries(std::string_view text) {
  if (!text.starts_with(kMark)) return {};
  text.remove_prefix(kMark.size());
  if (text.size() < kLongCheckSize) return {};
  const std::string_view content = text.substr(kLongCheckSize);
  const Bytes check = LongCheckForm(AsBytes(content));
  if (AsText(check) != text.substr(0, kLongCheckSize)) return {};
  FileSummaries summaries;
  for (Fields fields(content); !fields.IsAtEnd();) {
    const ByteView name = fields.Take(fields.Word());
    auto summary = TakeSummary(fields);
    if (!summary) return {};
    summaries.insert_or_assign(std::string(AsText(name)), std::move(*summary));
  }
  return summaries;
}

std::filesystem::path SummariesFile(const std::filesystem::path& dataFolder, std::string_view unitId) {
  return dataFolder / ".summaries" / unitId;
}

FileSummaries ReadSummaries(const std::filesystem::path& dataFolder, std::string_view unitId) {
  std::error_code ignored;
  const auto text = ReadWholeFile(SummariesFile(dataFolder, unitId), kMaxFileSize, ignored);
  return text ? DecodeSummaries(*text) : FileSummaries();
}

void StoreSummaries(const std::filesystem::path& dataFolder, std::string_view unitId) {
  UnitFiles files(dataFolder / unitId);
  if (files.Open()) return;
  FileSummaries known = ReadSummaries(dataFolder, unitId), summaries;
  DataFileReader reader;
  bool hasChanged = false;
  for (const std::string& name : files.Names()) {
    struct stat status {};
    if (::fstatat(files.Descriptor(), name.c_str(), &status, 0) != 0) continue;
    const FileStamp stamp = StampOf(status);
    if (const auto found = known.find(name); found != known.end() && found->second.stamp == stamp) {
      summaries.insert(known.extract(found));
      continue;
    }
    if (reader.Read(files.Descriptor(), name.c_str()) != DataFileReader::Outcome::kRead) continue;
    if (reader.Content().size() != stamp.size) continue;
    if (auto summary = Summarise(reader.Content(), stamp)) {
      summaries.emplace(name, std::move(*summary));
      hasChanged = true;
    }
  }
  if (!hasChanged && known.empty()) return;
  const std::filesystem::path file = SummariesFile(dataFolder, unitId);
  std::error_code ignored;
  std::filesystem::create_directory(file.parent_path(), ignored);
  if (std::filesystem::is_symlink(file.parent_path(), ignored))
    return;  // what it leads to is somebody else's
  ReplaceFile(file, EncodeSummaries(summaries));
}

}  // namespace pallomir
