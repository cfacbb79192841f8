#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QTimeZone>

#include "fakes/temporary_folder.h"
#include "platform/qt/qt_clock.h"
#include "platform/qt/qt_folders.h"
#include "platform/qt/user_registry_file.h"

namespace pallomir {
namespace {

using Season = ZoneInfo::Season;

TEST(Clock, ReadsTheRulesOfAZone) {
  constexpr Millis kWinter = 1768500000000;  // 15 January 2026
  constexpr Millis kSummer = 1784100000000;  // 15 July 2026
  const std::tuple<const char*, Millis, int, Season, int> cases[] = {
      {"America/New_York", kWinter, 300, Season::kStandard, -60},
      {"America/New_York", kSummer, 300, Season::kDaylight, -60},
      {"Europe/Berlin", kSummer, -60, Season::kDaylight, -60},
      {"Australia/Lord_Howe", kWinter, -630, Season::kDaylight, -30},
      {"Australia/Lord_Howe", kSummer, -630, Season::kStandard, -30},
      // Had daylight time long ago, and has quarters of an hour.
      {"Asia/Kolkata", kSummer, -330, Season::kNoDaylightRules, -60},
      {"Asia/Kathmandu", kSummer, -345, Season::kNoDaylightRules, -60},
      {"UTC", kWinter, 0, Season::kNoDaylightRules, -60},
  };
  for (const auto& [zone, at, bias, season, daylightBias] : cases) {
    const auto info = ZoneInfoAt(QTimeZone(zone), at);
    ASSERT_TRUE(info);
    EXPECT_EQ(std::tuple(info->bias, info->season, info->daylightBias),
              std::tuple(bias, season, daylightBias))
        << zone << at;
    EXPECT_EQ(info->standardBias, 0);
  }
  EXPECT_FALSE(ZoneInfoAt(QTimeZone("Nowhere/Nothing"), kWinter));
}

TEST(Clock, BiasesAddUpToTheOffsetEverywhere) {
  for (const QByteArray& id : QTimeZone::availableTimeZoneIds()) {
    const QTimeZone zone(id);
    for (Millis at = 1767225600000; at < 1767225600000 + 365 * kDay; at += 61 * kDay) {
      const auto info = ZoneInfoAt(zone, at);
      ASSERT_TRUE(info);
      const int total = info->bias + (info->season == Season::kDaylight ? info->daylightBias : 0);
      EXPECT_EQ(total, -zone.offsetFromUtc(QDateTime::fromMSecsSinceEpoch(at)) / 60) << id.toStdString();
    }
  }
}

TEST(Folders, ComeFromTheEnvironment) {
  const fakes::TemporaryFolder home;
  const std::string at = home.Path().string();
  const QByteArray oldHome = qgetenv("HOME");
  const struct {
    std::string profile, data, userProfile, commonData;
  } cases[] = {
      {"", "", at, at + "/.local/share"},
      {at + "/profile", at + "/data/deep", at + "/profile", at + "/data/deep"},
      {"", "relative/data", at, at + "/.local/share"},
  };
  for (const auto& row : cases) {
    qputenv("HOME", at.c_str());
    qputenv("UserProfile", row.profile.c_str());
    qputenv("XDG_DATA_HOME", row.data.c_str());
    const Folders folders = SystemFolders();
    EXPECT_EQ(folders.userProfile, row.userProfile);
    EXPECT_EQ(folders.commonData, row.commonData);
    EXPECT_TRUE(std::filesystem::is_directory(folders.commonData));
    EXPECT_EQ(folders.application.string(), QCoreApplication::applicationDirPath().toStdString());
  }
  qputenv("HOME", oldHome);
  qunsetenv("UserProfile");
  qunsetenv("XDG_DATA_HOME");
}

TEST(UserRegistry, KeepsValuesForOtherProcesses) {
  const fakes::TemporaryFolder folder;
  const auto file = folder.Path() / "pallomir browser" / "Startup.ini";
  UserRegistryFile(file).Save("Main Window Handle", "140737488355327");
  const UserRegistryFile other(file);
  EXPECT_EQ(other.Get("Main Window Handle", "0"), "140737488355327");
  EXPECT_EQ(other.Get("Nothing", "0"), "0");
}

}  // namespace
}  // namespace pallomir
