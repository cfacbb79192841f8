#include "shell/alert_joints.h"

#include "alerts/staleness.h"
#include "commands/alert_menus.h"
#include "commands/unit_menu.h"

namespace pallomir {

AlertJoints::AlertJoints(const JoinedRooms& rooms)
    : ports_(rooms.ports),
      view_(ports_.views.alerts),
      choices_(rooms.choices.alerts),
      menus_(rooms.menus),
      units_(rooms.units),
      feed_(rooms.feed),
      signal_(view_, ports_.desktop.sound, ports_.loop, ports_.trace, choices_,
              ports_.storage.folders.application / "Alerts"),
      delivery_(choices_, rooms.choices.provider, ports_.desktop.questions),
      mute_(choices_.muteUntil, rooms.localClock, ports_.loop) {
  signal_.isMuted = [this] { return mute_.IsMuted(); };
  signal_.changed = [this] { ShowSignal(); };
  delivery_.changed = [this] { ShowDelivery(menus_, delivery_); };
  mute_.changed = [this] { ShowMute(); };
  HandleCommands(rooms.handlers);
  HandleDelivery(rooms.handlers);
}

void AlertJoints::HandleCommands(CommandHandlers& handlers) {
  const auto handle = [&](Command command, auto handler) { handlers.Set(command, handler); };
  handle(Command::kAlertMode, [this](int mode) { signal_.ChooseMode(mode); });
  handle(Command::kAlertSound, [this](int sound) { signal_.ChooseSound(sound); });
  handle(Command::kAlertTest, [this](int) {
    ports_.desktop.window.BringToForeground();
    if (signal_.IsPersisting()) view_.RaisePersist();
    signal_.Start();
  });
  handle(Command::kStaleAge, [this](int choice) {
    choices_.staleIndex.Store(choice);
    ShowStaleness(menus_, choice);
  });
  const auto handleToggle = [&](Command command, Choice<bool>& choice) {
    handle(command, [this, command, &choice](int) {
      choice.Store(!choice.Value());
      menus_.At(command).checked = choice.Value();
    });
  };
  handleToggle(Command::kNowAlerts, choices_.reportNow);
  handleToggle(Command::kZoneAlertsOnly, choices_.zoneAlertsOnly);
  handle(Command::kMuteFor, [this](int time) { mute_.Choose(static_cast<MuteFor>(time)); });
}

void AlertJoints::HandleDelivery(CommandHandlers& handlers) {
  handlers.Set(Command::kEmailMe, [this](int) { delivery_.AskEmail(); });
  handlers.Set(Command::kTextMePhone, [this](int) { delivery_.AskPhone(); });
  handlers.Set(Command::kCarrier, [this](int index) { delivery_.ChooseCarrier(index); });
}

void AlertJoints::Open() {
  AddCarriers(menus_);
  FillUnitMenus();
  choices_.zoneAlertsOnly.Read();
  menus_.At(Command::kZoneAlertsOnly).checked = choices_.zoneAlertsOnly.Value();
  menus_.At(Command::kNowAlerts).checked = choices_.reportNow.Value();
  ShowStaleness(menus_, choices_.staleIndex.Value());
  ShowDelivery(menus_, delivery_);
  ShowSignal();
  mute_.Open();
}

// They show what is so when they open.
void AlertJoints::FillUnitMenus() {
  menus_.At(Command::kUnits).fill = [this](MenuItem& menu) {
    MarkStaleUnits(menu, units_.List(), [this](const MobileUnit& unit) {
      return IsUnitStale(units_.Book(), feed_.Points(), unit.id, ports_.clock.NowUtc(),
                         choices_.staleIndex.Value());
    });
  };
  menus_.At(Command::kNowAlertsUnits).fill = [this](MenuItem& menu) {
    FillNowUnits(menus_, menu, units_.List());
  };
}

void AlertJoints::Close() {
  signal_.Close();
  mute_.Close();
}

void AlertJoints::OnLaidOut() { signal_.StopPlaying(); }

// Points that come live again and again are no news: the first after a silence are.
void AlertJoints::OnBatch(const MergedBatch& batch) {
  if (!batch.isLive && signal_.IsPersisting()) view_.RaisePersist();
  const bool isNews = !batch.isLive || batch.breaksSilence;
  if ((isNews && !choices_.zoneAlertsOnly.Value()) || batchHoldsAlert()) signal_.Start();
}

void AlertJoints::OnFoundLate() {
  if (choices_.zoneAlertsOnly.Value()) signal_.Start();
}

void AlertJoints::ShowSignal() { ShowAlertSignal(menus_, choices_.enabled.Value(), choices_.sound.Value()); }

void AlertJoints::ShowMute() {
  const bool isMuted = mute_.IsMuted();
  if (isMuted) signal_.Silence();
  ShowMuteChoice(menus_, mute_.Text());
  view_.ShowMute(isMuted, mute_.Text());
}

}  // namespace pallomir
