#include "platform/qt/qt_folders.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <cstdlib>
#include <string>
#include <system_error>

namespace pallomir {
namespace {

std::string Environment(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

// The accounts database knows the home folder where the environment does not.
std::filesystem::path Home() {
  const std::string home = Environment("HOME");
  return home.empty() ? std::filesystem::path(QDir::homePath().toStdString()) : std::filesystem::path(home);
}

}  // namespace

Folders SystemFolders() {
  Folders folders;
  folders.application = QCoreApplication::applicationDirPath().toStdString();
  // As it is at the start: a program that is renamed while it runs is gone from its place.
  folders.executable = QFileInfo(QCoreApplication::applicationFilePath()).fileName().toStdString();
  const std::string profile = Environment("UserProfile");
  folders.userProfile = profile.empty() ? Home() : std::filesystem::path(profile);
  folders.commonData = Environment("XDG_DATA_HOME");
  // A relative path would mean another folder with every working directory.
  if (!folders.commonData.is_absolute()) folders.commonData = Home() / ".local" / "share";
  std::error_code ignored;
  std::filesystem::create_directories(folders.commonData, ignored);
  return folders;
}

}  // namespace pallomir
