#include "platform/qt/user_registry_file.h"

#include <QSettings>
#include <QStandardPaths>
#include <QString>
#include <utility>

namespace pallomir {
namespace {

QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// Other processes read and write the same file, so nothing is kept between two calls.
QSettings Open(const std::filesystem::path& file) {
  return QSettings(QString::fromStdString(file.string()), QSettings::IniFormat);
}

std::filesystem::path DefaultFile() {
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
  return std::filesystem::path(folder.toStdString()) / "pallomir browser" / "Startup.ini";
}

}  // namespace

UserRegistryFile::UserRegistryFile() : UserRegistryFile(DefaultFile()) {}

UserRegistryFile::UserRegistryFile(std::filesystem::path file) : file_(std::move(file)) {}

std::string UserRegistryFile::Get(std::string_view key, std::string_view defaultValue) const {
  const QSettings settings = Open(file_);
  return settings.value(Text(key), Text(defaultValue)).toString().toStdString();
}

void UserRegistryFile::Save(std::string_view key, std::string_view value) {
  QSettings settings = Open(file_);
  settings.setValue(Text(key), Text(value));
  settings.sync();
}

}  // namespace pallomir
