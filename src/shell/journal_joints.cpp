#include "shell/journal_joints.h"

#include <utility>

#include "alerts/staleness.h"
#include "ui/replace_question.h"

namespace pallomir {

JournalJoints::JournalJoints(const JoinedRooms& rooms, ZoneJoints& zones)
    : rooms_(rooms),
      ports_(rooms.ports),
      view_(ports_.views.journal),
      choices_(rooms.choices.journal),
      zones_(zones),
      list_(store_, rooms.localClock),
      export_(store_, rooms.localClock, ports_.loop,
              [this](const std::string& text) { view_.ShowJournalNote(text); }),
      notices_(ports_.desktop.notifier, ports_.clock, rooms.localClock, choices_.notifies) {
  store_.failed = [this](const std::string& why) { ports_.trace.Line("journal: " + why); };
  list_.isStale = [this](const std::string& unitId) {
    return IsUnitStale(rooms_.units.Book(), rooms_.feed.Points(), unitId, ports_.clock.NowUtc(),
                       rooms_.choices.alerts.staleIndex.Value());
  };
  zones_.zonesChanged = [this] { TakeZones(); };
  rooms.handlers.Set(Command::kJournal, [this](int) { Show(); });
}

void JournalJoints::Open() {
  choices_.place.Read();
  choices_.notifies.Read();
  choices_.flickerSeconds.Read();
  choices_.flickerMeters.Read();
  const auto folder = ports_.storage.folders.commonData / "pallomir";
  const std::string problem =
      store_.Open(folder / (rooms_.choices.demoMode.Value() ? "Journal_Demo.db" : "Journal.db"));
  if (!problem.empty()) ports_.desktop.questions.Tell(problem);
  Journal::Host host;
  host.changed = [this] { OnChanged(); };
  host.alerted = [this](const JournalEntry& entry) { Alert(entry); };
  host.foundLate = [this] { foundLate(); };
  const FlickerLimits limits{choices_.flickerSeconds.Value() * kSecond,
                             static_cast<double>(choices_.flickerMeters.Value())};
  journal_ = std::make_unique<Journal>(store_, ports_.loop, ports_.clock, rooms_.localClock,
                                       rooms_.feed.Points(), rooms_.units.Book(), limits, std::move(host));
  journal_->SetZones(seenZones_ = zones_.Tree());
  OnChanged();
}

void JournalJoints::Close() {
  if (journal_) journal_->Close();
  export_.Drop();
  ports_.desktop.notifier.Close();
  view_.CloseJournal();
}

// The menus are told of more than the zones themselves.
void JournalJoints::TakeZones() {
  if (journal_ && zones_.Tree() != seenZones_) journal_->SetZones(seenZones_ = zones_.Tree());
}

void JournalJoints::OnReload() {
  if (journal_) journal_->OnReload();
}

void JournalJoints::OnBatch(const MergedBatch& batch) {
  if (journal_) journal_->OnBatch(batch);
}

void JournalJoints::OnChanged() {
  view_.RefreshJournal();
  view_.ShowOpenAlerts(store_.OpenAlerts(), [this] { Show(); });
}

void JournalJoints::Show() {
  if (!journal_) return;
  JournalView::Actions actions;
  actions.show = [this](const JournalEntry& entry) { ShowPlace(entry); };
  actions.acknowledge = [this](const std::vector<std::int64_t>& ids) { journal_->Acknowledge(ids); };
  actions.acknowledgeAll = [this] { journal_->AcknowledgeAll(list_.Filter()); };
  actions.save = [this] { Save(); };
  actions.notify = [this](bool on) { choices_.notifies.Store(on); };
  actions.moved = [this](const std::string& place) { choices_.place.Store(place); };
  view_.ShowJournal(list_, {choices_.place.Value(), choices_.notifies.Value()}, std::move(actions));
}

// On the timeline only while the unit is displayed; what happened outside of the window of time is shown on
// the map alone.
void JournalJoints::ShowPlace(const JournalEntry& entry) {
  WorldBox box;
  box.Widen(entry.place.x, entry.place.y);
  rooms_.map.ZoomTo(box);
  rooms_.timeline.PointAt(rooms_.units.Book().EnabledPositionOf(entry.unitId),
                          rooms_.localClock.ToLocal(entry.utc));
  rooms_.marks.ShowPlace(entry.place);
}

void JournalJoints::Alert(const JournalEntry& entry) {
  notices_.Tell(entry, [this, entry] {
    ports_.desktop.window.BringToForeground();
    ShowPlace(entry);
  });
}

void JournalJoints::Save() {
  view_.AskCsvFile([this](const std::filesystem::path& file) {
    AskToReplace(ports_.desktop.questions, file, "Save Journal as CSV", [this, file] { SaveAs(file); });
  });
}

void JournalJoints::SaveAs(const std::filesystem::path& file) { export_.Start(list_.Filter(), file); }

}  // namespace pallomir
