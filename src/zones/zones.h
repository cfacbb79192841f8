#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "base/trace.h"
#include "platform/event_loop.h"
#include "ui/question_queue.h"
#include "zones/zone_list_sender.h"
#include "zones/zone_store.h"
#include "zones/zones_view.h"

namespace pallomir {

/// What can be done with a zone of the list.
enum class ZoneOperation { kAdd, kDel, kMod, kZoom, kBeen };

/// Which of the map's popup entries for a shape that is drawn are shown.
struct ZonePopupEntries {
  bool finish = false;        ///< `mnuPopupZoneFinish`
  bool cancel = false;        ///< `mnuPopupZoneCancel`, with `mnuPopupZoneSeparator`
  bool deleteVertex = false;  ///< `mnuPopupZoneDeleteVertex`
  bool operator==(const ZonePopupEntries&) const = default;
};

/// The alert zones as the user works with them: the list and its file, what is asked before it changes, and
/// the shape that the page draws meanwhile.
///
///     idle -> options asked -> the page draws -> shape saved, or drawing cancelled -> idle
///
/// Every change that the user confirms is in the file before anything shows it; one that can't be stored is
/// told, and everything stays as it was.
class Zones {
 public:
  /// What the room needs and whom it tells. All calls come from the event loop.
  struct Host {
    ZoneListSender::Write write;    ///< into a field of the map page
    std::function<void()> changed;  ///< the list, or what can be done with it: menus and windows
    std::function<void(const ZoneBounds&)> zoomTo;
    std::function<void(ZoneOrdinal)> beenIn;  ///< visits to this zone are to be searched for
    std::function<void()> endProgram;
  };

  Zones(ZonesView& view, EventLoop& loop, QuestionQueue& questions, Trace& trace, std::filesystem::path file,
        Host host);

  // The list.
  const ZoneTree& Tree() const { return store_.Tree(); }
  bool CanUndo() const { return store_.CanUndo(); }
  bool CanRedo() const { return store_.CanRedo(); }
  /// Whether the list can be changed: no shape is being drawn, nothing is being imported.
  bool CanChange() const { return !drawing_ && !isImporting_; }
  bool IsDrawing() const { return drawing_.has_value(); }
  const ZonePopupEntries& PopupEntries() const { return popup_; }

  /// Reads the file and shows the list, also to the page.
  void LoadZones();
  /// The program ends: nothing more is sent.
  void Close() { sender_.Stop(); }

  // What the user asks for.
  void Add();  ///< a zone at the top level
  /// Nothing happens for a zone that is not in the list.
  void Run(ZoneOperation operation, ZoneOrdinal zone);
  void SwapTopLevelKind();
  void DeleteAll();
  void Undo();
  void Redo();
  void Rename(ZoneOrdinal zone, const std::string& description);
  /// Zones from elsewhere, behind the present ones or in their place. Their list is written on another
  /// thread; until it has been taken over or cancelled no other change begins. Null when it can't begin,
  /// which the user is told.
  std::shared_ptr<PendingZones> BeginImport(const ZoneTree& zones, bool replace);
  void EndImport(PendingZones& pending);
  void CancelImport();
  void FinishShape();
  void CancelShape();
  void TellHowToDeleteVertices();

  // What the page tells.
  void OnPageReady();
  void OnPageLost();
  void OnShapeFinished(const std::string& payload);
  void OnShapeCancelled();
  void OnShapeClosable();

  // Questions.
  /// The deepest zone on the way to a place in degrees; kNone outside all.
  ZoneOrdinal ZoneAt(double lat, double lng) { return store_.Projected().AlertPosition(lat, lng).deepest; }
  bool IsAlertPosition(double lat, double lng) { return store_.Projected().AlertPosition(lat, lng).isAlert; }
  /// The descriptions of the zones on the way to this one, outermost first, each followed by `end`.
  std::string PathText(ZoneOrdinal zone, const std::string& end = "\r\n") const;

 private:
  /// A zone of the list as it was when something was asked about it. The list may be another one when the
  /// answer comes.
  struct Reference {
    std::string section;  // "X" stands for the top level
    ZoneContent content;
  };
  struct Drawing {
    ZoneOperation operation;  // kAdd or kMod
    Reference target;         // the parent of a new zone, or the zone that is changed
    ZoneOptions options;
  };

  Reference ReferenceTo(ZoneOrdinal zone) const;
  /// The zone's place now, kNone for the top level; nothing, and the user is told, when it is another zone.
  std::optional<ZoneOrdinal> Find(const Reference& reference);

  void AskForNewZone(ZoneOrdinal parent);
  void AskForChange(ZoneOrdinal zone);
  void AskToDelete(ZoneOrdinal zone);
  void OnAddAnswer(const std::string& button, const ZoneOptions& options, const Reference& parent);
  void OnModAnswer(const std::string& button, const ZoneOptions& options, const Reference& zone);
  void Draw(Drawing drawing, const ZonePopupEntries& entries);
  void EndDrawing();
  void SaveShape(const std::vector<ZoneVertex>& vertices);
  /// Tells a problem, or shows what was stored. True in the second case.
  bool Stored(const std::string& problem);
  bool MayChange();
  bool MayDraw();
  void ShowList();
  void Ask(const std::string& text, std::function<void()> then);

  ZonesView& view_;
  QuestionQueue& questions_;
  Trace& trace_;
  Host host_;
  ZoneStore store_;
  ZoneListSender sender_;
  std::optional<Drawing> drawing_;
  Reference toDelete_;  // whom the open question is about
  ZonePopupEntries popup_;
  bool isPageThere_ = false;
  bool isImporting_ = false;
  int imports_ = 0;  // begun
};

}  // namespace pallomir
