#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/event_loop.h"
#include "platform/local_clock.h"
#include "platform/web_query.h"
#include "reports/visit_text.h"
#include "reports/visit_worker.h"
#include "timeline/time_window.h"

namespace pallomir {

/// Where visits are looked for.
struct VisitTarget {
  bool isZone = false;
  std::string name;  ///< of a zone; of a clicked place its position
  double lat = 0;    ///< of a clicked place, degrees, with the zoom of the map; the server is asked by them
  double lng = 0;
  int zoom = 0;
  /// Called when a search starts, on the event loop: what makes the area, beside it. Nothing where there is
  /// no such place any more.
  std::function<std::function<SearchArea()>()> area;
};

/// What the user chooses in the dialog.
struct VisitChoices {
  std::size_t unit = 0;  ///< 0: all, else the unit's number in the list
  TimeWindow range;      ///< local times, both included
  bool untilNow = true;
  bool fromBeginning = true;
  bool mostRecentOnly = false;  ///< of all times, whatever the range is
  bool atServer = false;        ///< ask the station of the web site; never for a zone, which it doesn't know
};

/// The dialog "Been Here?" without its window: when were units at a place? It searches the data files on this
/// computer beside the event loop, or asks the station for those of its own. A search goes on while map and
/// page come and go; another one, the window's end and the program's end it.
class BeenHere {
 public:
  struct Host {
    std::function<void()> changed;                           ///< what there is to show
    std::function<void(const std::string& message)> failed;  ///< why a search ended before its time
    /// Has the days of a visit of this unit loaded.
    std::function<void(const std::string& unitId, const TimeWindow& days)> load;
  };

  /// Whom to ask for the files that are not on this computer.
  struct Server {
    WebQuery& query;
    std::string webSite;  ///< host, or host:port
  };

  /// Loop, clock and query outlive this.
  BeenHere(EventLoop& loop, const LocalClock& clock, std::filesystem::path dataFolder, Server server,
           Host host);
  ~BeenHere() { Close(); }

  /// Another place: what was found before goes, a search that runs is dropped. All units are chosen, the
  /// range is the main window's, both boxes are ticked.
  void Open(VisitTarget target, std::vector<SearchedUnit> units, const TimeWindow& window);
  /// The window is gone.
  void Close();

  // What is shown.
  std::string Caption() const;
  const VisitTarget& Target() const { return target_; }
  const std::string& Address() const { return address_; }  ///< empty until it is known
  void SetAddress(const std::string& address);
  /// Unit i of the list is element i - 1.
  const std::vector<SearchedUnit>& Units() const { return units_; }
  VisitChoices choices;
  bool IsSearching() const { return worker_.IsRunning() || isAsking_; }
  bool IsAsking() const { return isAsking_; }  ///< the server, which tells no progress
  std::string ButtonCaption() const;
  int Percent() const { return report_.progress.percent; }
  std::string ProgressText() const;  ///< "12 of 34 files"; empty while nothing is searched
  /// How the last search went, or what was done with it, in a sentence.
  const std::string& Status() const { return status_; }
  void Say(std::string status);

  const LocalClock& Clock() const { return clock_; }

  // What was found. Line i from 0 on; visits name units by their place in Units().
  const std::vector<Visit>& Visits() const { return visits_; }
  std::string Line(std::size_t i) const;
  std::string Text() const;  ///< all lines, each with CR LF
  std::string Details(
      std::size_t i) const;                ///< unit, length and records of a visit; empty where there is none
  TimeWindow DaysOf(std::size_t i) const;  ///< from the midnight before to the midnight behind, local
  std::string Csv() const { return VisitsCsv(visits_, units_); }

  // What the user does.
  void Search();
  /// Ends the search, keeping what was found. False when none runs.
  bool Cancel();
  /// Loads the days of a visit. Nothing happens where there is none.
  void Load(std::size_t i);

 private:
  std::vector<std::size_t> ChosenUnits() const;
  std::optional<TimeSpan> ChosenSpan() const;
  void SearchHere(const TimeSpan& span, std::size_t limit);
  void AskServer(const TimeSpan& span, std::size_t limit);
  void OnAnswer(const WebQuery::Answer& answer);
  void Drop();
  void OnReport(const VisitReport& report);
  std::string EndOf(const VisitReport& report) const;

  const LocalClock& clock_;
  std::filesystem::path dataFolder_;
  Server server_;
  Host host_;
  VisitTarget target_;
  std::string address_;
  std::vector<SearchedUnit> units_;
  std::vector<std::size_t> searched_;  // their places in units_, in the order of the query
  VisitReport report_;
  std::vector<Visit> visits_;
  std::string status_;
  Millis begun_ = 0;
  bool isAsking_ = false;
  VisitWorker worker_;
};

/// Whether a unit can have data files: its ID names their folder.
bool IsUnitId(const std::string& id);

}  // namespace pallomir
