#pragma once

#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "base/trace.h"
#include "map/map_view.h"
#include "map/page_commands.h"
#include "map/page_form.h"
#include "map/pending_fit.h"
#include "map/track_tiles.h"
#include "platform/browser.h"
#include "platform/event_loop.h"
#include "platform/folders.h"

namespace pallomir {

/// How far the map page is, and what the pointer did on it.
struct PageState {
  bool MapCreated = false;        ///< status 1; the first fit waits for it
  bool MouseMoveToggle = false;   ///< only every second mouse move is acted on; a click acts on the last
  std::int32_t LastMouseLat = 0;  ///< 1/600000 degree
  std::int32_t LastMouseLng = 0;
  int LastMouseZoom = 0;
  bool IsRightClicked = false;   ///< there was one at a place
  std::int32_t RightClickX = 0;  ///< world coordinates of the last right-click
  std::int32_t RightClickY = 0;
};

/// What the trace says when the page is complete. Scripts wait for it.
inline constexpr char kPageReadyLine[] = "map page ready";

/// The map page as the client works with it: whether the page is there, which view it shows, the tiles that
/// are drawn for it, and what waits for them.
///
///     Open -> page asked for -> map created -> ready        the page; a lost one is asked for again, and
///                                                           meanwhile its place says what is missing
///     Rebuild -> drawn part by part -> generation told -> waiting fit sent -> waiting questions answered
///
/// While tiles are drawn the points of the drawing must stay as they are (`IsRebuilding`).
class MapBridge {
 public:
  /// What the bridge needs to know and whom it tells. All calls come from the event loop.
  struct Host {
    std::function<bool()> isClosing;
    std::function<PixelSize()> browserSize;
    /// The tracks and which of their points get rings; the bridge adds the view.
    std::function<TrackDrawing()> drawing;
    std::function<bool()> isTopLevelAlerted;
    std::function<PageChoices()> choices;  ///< what the user chose of the map, for a new page

    // The bridge's own work.
    std::function<void()> viewMoved;  ///< the page reported another centre, or another zoom
    std::function<void(const DeleteError&)> rebuildFailed;
    std::function<void()> rebuildEnded;  ///< in either way
    std::function<void(int)> reached;    ///< a line of the start-up checklist, 1..17
    std::function<void()> ready;         ///< the page is complete, half a second ago
    std::function<void()> lost;          ///< the page can't be shown; it is tried again

    // What the user does on the page. One that nobody has set is skipped.
    std::function<void(ViewPoint)> pointerMoved;               ///< every second time
    std::function<void()> menuWanted;                          ///< away from the map
    std::function<void(double lat, double lng)> menuWantedAt;  ///< a place, in degrees
    std::function<void(const std::string& address)> addressFound;
    std::function<void(const std::string& payload)> shapeFinished;
    std::function<void()> shapeCancelled;
    std::function<void()> shapeClosable;
  };

  /// `view` is what the page shows and was asked to show; `showError` tells the user. The view outlives the
  /// bridge, as the ports do.
  MapBridge(Browser& browser, EventLoop& loop, Trace& trace, const Folders& folders, std::string webSite,
            MapView& view, std::function<void(const std::string&)> showError, Host host);
  ~MapBridge();

  /// Shows the placeholder and asks for the page.
  void Open();
  /// Asks for a lost page at once.
  void OpenIfLost();
  void Close();

  /// Deletes all tiles and announces the next generation later: after drawing, where a zoom is known. A
  /// drawing that has not ended is dropped; what waited for it waits for this one.
  void Rebuild();
  bool IsRebuilding() const { return tiles_.IsRebuilding(); }
  /// The points are about to change; a Rebuild has to follow.
  void DropRebuild();
  const TrackTiles& Tiles() const { return tiles_; }
  const PageState& Page() const { return page_; }
  /// What the page shows.
  const MapView& View() const { return view_; }
  PageForm& Form() { return form_; }
  /// Whom the bridge tells, for those that join it once it is made.
  Host& Listeners() { return host_; }

  /// Points have arrived that no rebuild has drawn yet.
  void NotePoints() { notDrawn_ = true; }
  bool HasUndrawnPoints() const { return notDrawn_; }

  /// Whether fits are sent to the page: from the first FitToNewData on.
  bool MayFit() const { return fit_.HasData(); }
  /// Draws the tiles anew and then has the page show the box.
  void FitToData(const WorldBox& box);
  /// The same after a batch of data has come.
  void FitToNewData(const WorldBox& box);
  /// Has the page show the box; its report of the zoom draws the tiles.
  void ZoomTo(const WorldBox& box);

  void SendPan(double lat, double lng);
  void SendSize();    ///< of the browser control
  void SendCentre();  ///< that of the view, where it has one

 private:
  bool BeforeNavigate(const std::string& url);
  void RunCommand(const std::string& text);
  void On(const page::Panned& pan);
  void On(const page::Status& status);
  void On(const page::TileQuestion& question);
  void On(const page::Zoomed& zoomed);
  void On(const page::PopupAtPlace& click);
  void On(const page::MouseMoved& move);
  void On(const page::PopupWithoutPlace&);
  void On(const page::GeocodeAnswer& answer);
  void On(const page::ZoneEdit& edit);
  void On(const page::Malformed&) {}
  void On(const page::Ignored&) {}

  void TakeMove();
  void OnReady();
  void OnLost(const std::string& reason);
  void AskForPage();
  void ChangeZoom(int zoom, const char* origin);
  void OnTilesTick();
  void DrawFit(const WorldBox& box);
  void SendFit(const PendingFit::Due& due);
  void Answer(const page::TileQuestion& question);

  Browser& browser_;
  PageForm form_;
  EventLoop& loop_;
  Trace& trace_;
  std::filesystem::path application_;
  std::string webSite_;
  MapView& view_;
  std::function<void(const std::string&)> showError_;
  Host host_;

  PageState page_;
  std::optional<page::MouseMoved> skippedMove_;  // the last report, while it was not acted on
  bool isLost_ = false;
  PixelSize addressSize_;  // the map size that the page's address named

  TrackTiles tiles_;
  bool rebuildOwed_ = false;  // there was something to draw before a zoom was known
  bool notDrawn_ = false;
  PendingFit fit_;
  std::deque<page::TileQuestion> waitingQuestions_;  // for the end of the rebuild

  std::unique_ptr<Timer> tmrTiles_;
  std::unique_ptr<Timer> splashPause_;
  std::unique_ptr<Timer> pageRetry_;
};

}  // namespace pallomir
