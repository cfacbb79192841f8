#include "platform/qt/tile_scheme.h"

#include <QBuffer>
#include <QFile>
#include <QUrl>
#include <QWebEngineUrlRequestJob>
#include <QWebEngineUrlScheme>
#include <algorithm>
#include <string>
#include <system_error>
#include <utility>

namespace pallomir {
namespace {

constexpr char kScheme[] = "tile";
constexpr std::size_t kLongestName = 64;
constexpr qint64 kLargestFile = 4 << 20;  // a tile has 33 kB
constexpr char kPngSignature[] = "\x89PNG\r\n\x1a\n";

bool IsPlainPngName(std::string_view name) {
  const auto isPlain = [](char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') || character == '_' || character == '-' || character == '.';
  };
  return name.size() <= kLongestName && name.ends_with(".png") && !name.starts_with('.') &&
         std::all_of(name.begin(), name.end(), isPlain);
}

// A link could lead to any file of the user.
bool IsPlainFile(const std::filesystem::path& path) {
  std::error_code ignored;
  return std::filesystem::symlink_status(path, ignored).type() == std::filesystem::file_type::regular;
}

// The whole content at once: the renderer may write over the file while the engine takes the bytes.
QByteArray ReadPng(const std::filesystem::path& path) {
  QFile file(QString::fromStdString(path.string()));
  if (!file.open(QIODevice::ReadOnly)) return {};
  if (file.size() > kLargestFile) return {};
  const QByteArray content = file.readAll();
  return content.startsWith(kPngSignature) ? content : QByteArray();
}

std::string NameIn(const QUrl& url) {
  if (!url.host().isEmpty()) return {};
  std::string path = url.path(QUrl::FullyDecoded).toStdString();
  return path.starts_with('/') ? path.substr(1) : path;
}

}  // namespace

void RegisterTileScheme() {
  QWebEngineUrlScheme scheme(kScheme);
  scheme.setSyntax(QWebEngineUrlScheme::Syntax::Path);
  // Secure, so that no page counts these images as mixed content.
  scheme.setFlags(QWebEngineUrlScheme::SecureScheme);
  QWebEngineUrlScheme::registerScheme(scheme);
}

std::optional<std::filesystem::path> FindServedFile(const TileFiles& files, std::string_view name) {
  if (!IsPlainPngName(name)) return std::nullopt;
  for (const auto& folder : files.folders) {
    if (auto path = folder / name; IsPlainFile(path)) return path;
  }
  for (const auto& path : files.files) {
    if (path.filename() == name && IsPlainFile(path)) return path;
  }
  return std::nullopt;
}

TileSchemeHandler::TileSchemeHandler(TileFiles files) : files_(std::move(files)) {}

void TileSchemeHandler::requestStarted(QWebEngineUrlRequestJob* job) {
  if (job->requestMethod() != "GET") return job->fail(QWebEngineUrlRequestJob::RequestDenied);
  const auto path = FindServedFile(files_, NameIn(job->requestUrl()));
  const QByteArray content = path ? ReadPng(*path) : QByteArray();
  if (content.isEmpty()) return job->fail(QWebEngineUrlRequestJob::UrlNotFound);
  auto* device = new QBuffer(job);
  device->setData(content);
  device->open(QIODevice::ReadOnly);
  job->reply("image/png", device);
}

}  // namespace pallomir
