#include "settings/stored_choices.h"

#include <utility>

#include "settings/choice_table.h"

namespace pallomir {

StoredChoices::StoredChoices(Settings& settings, ChoiceComplaint complain,
                             ChoiceComplaint complainOfAlertMethod)
    : complain_(std::move(complain)),
      complainOfAlertMethod_(std::move(complainOfAlertMethod)),
      window{{settings, choice::kWindowLeft, complain_},
             {settings, choice::kWindowTop, complain_},
             {settings, choice::kWindowWidth, complain_},
             {settings, choice::kWindowHeight, complain_},
             {settings, choice::kMaximised, complain_}},
      onStartup(settings, choice::kOnStartup, complain_),
      onUpdate(settings, choice::kOnUpdate, complain_),
      units(settings, choice::kMobileUnits, complain_),
      hotspots{{settings, choice::kHotspotMode, complain_},
               {settings, choice::kHotspots, complain_},
               {settings, choice::kSecureHotspots, complain_}},
      provider{{settings, choice::kProviderIndex, complain_},
               {settings, choice::kProviderName, complain_},
               {settings, choice::kProviderUrl, complain_},
               {settings, choice::kCustomProviderName, complain_},
               {settings, choice::kCustomProviderUrl, complain_}},
      alerts{{settings, choice::kReportNow, complain_},
             {settings, choice::kPhoneNumber, complain_},
             {settings, choice::kEmailAddress, complain_},
             {settings, choice::kAlertMethod, complainOfAlertMethod_},
             {settings, choice::kAlertAddress, complain_},
             {settings, choice::kAlertStaleIndex, complain_},
             {settings, choice::kAlertSound, complain_},
             {settings, choice::kAlertEnabled, complain_},
             {settings, choice::kZoneAlertsOnly, complain_},
             {settings, choice::kMuteUntil, complain_}},
      journal{{settings, choice::kJournalPlace, complain_},
              {settings, choice::kJournalNotifies, complain_},
              {settings, choice::kFlickerSeconds, complain_},
              {settings, choice::kFlickerMeters, complain_}},
      unitOfMeasure(settings, choice::kUnitOfMeasure, complain_),
      portBase(settings, choice::kPortBase, complain_),
      demoMode(settings, choice::kDemoMode, complain_),
      live(settings, choice::kLive, complain_) {}

void StoredChoices::Read() {
  hotspots.mode.Read();
  provider.index.Read();
  provider.name.Read();
  provider.url.Read();
  provider.customName.Read();
  provider.customUrl.Read();
  alerts.reportNow.Read();
  alerts.phoneNumber.Read();
  alerts.emailAddress.Read();
  alerts.method.Read();
  alerts.staleIndex.Read();
  unitOfMeasure.Read();
  portBase.Read();
  alerts.sound.Read();
  alerts.enabled.Read();
  demoMode.Read();
}

}  // namespace pallomir
