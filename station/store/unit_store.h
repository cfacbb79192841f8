#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "reports/visit_search.h"
#include "station/store/position_source.h"

namespace pallomir::station {

struct StoredUnit {
  std::string id;
  std::string description;  ///< empty where there is none
};

/// What became of the records that were merged into a unit.
struct MergeOutcome {
  std::size_t added = 0;
  std::size_t alreadyThere = 0;       ///< a record of the same second was stored before and has been kept
  std::vector<std::string> problems;  ///< what was found beside the records and left alone
  std::string error;                  ///< empty on success; otherwise nothing has changed
};

/// The right to change a store. While one exists, nobody else, in this process or another, changes anything.
class StoreWriter {
 public:
  virtual ~StoreWriter() = default;

  /// Adds records, strictly ascending in time with the time's flag clear, to a unit, which is created where
  /// it is missing. All or nothing: neither a reader nor a crash sees some of them without the others.
  virtual MergeOutcome Merge(std::string_view unitId, std::span<const WireRecord> records) = 0;

  /// Keeps what a demo unit reports in a window, where it says something else than what was kept of that
  /// window before, and drops what is older than `oldest` (packed). Searches find it; otherwise the unit is
  /// not there: it is neither listed nor read, and goes when something is merged into it. One with records
  /// from elsewhere is left as it is. Returns an error message, or an empty text.
  virtual std::string KeepDemo(std::string_view unitId, PackedWindow window,
                               std::span<const WireRecord> records, std::uint32_t oldest) = 0;

  /// The unit's description, or nothing where it has none. Where that can't be found out, `problem` says why.
  virtual std::optional<std::string> Description(std::string_view unitId, std::string& problem) const = 0;

  /// Sets the unit's description, which must be one that CleanDescription leaves as it is. Returns an error
  /// message, or an empty text.
  virtual std::string SetDescription(std::string_view unitId, std::string_view description) = 0;
};

/// Units with their descriptions and their position records, whatever they are kept in.
class UnitStore : public PositionSource {
 public:
  /// All units, ascending by ID. Where not all of them can be listed, `problem` says why; otherwise it is
  /// left as it is.
  virtual std::vector<StoredUnit> Units(std::string& problem) = 0;

  /// The IDs of all units that a search finds something of, ascending: also those that are kept for the demo.
  /// `problem` as above.
  virtual std::vector<std::string> UnitsToSearch(std::string& problem) const = 0;

  /// Waits for other writers, but not longer than `patience`. Returns null, with `problem` set, where the
  /// store can't be changed. The store itself is created where it is missing. It must outlive the writer.
  virtual std::unique_ptr<StoreWriter> StartWriting(std::chrono::milliseconds patience,
                                                    std::string& problem) = 0;

  /// A search for visits in what is stored, which its caller works through.
  virtual std::unique_ptr<VisitSearch> SearchVisits(VisitQuery query) const = 0;
};

/// The text as a store keeps it, so that it fits into the client's unit list: without "~", quotes, control
/// characters and blanks at either end, and cut to 80 bytes (whole UTF-8 characters).
std::string CleanDescription(std::string_view text);

}  // namespace pallomir::station
