#pragma once

#include <QWebEngineUrlSchemeHandler>
#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

namespace pallomir {

/// What the map page may see of the disk.
struct TileFiles {
  std::vector<std::filesystem::path> folders;  ///< every PNG file directly in them
  std::vector<std::filesystem::path> files;    ///< single PNG files
};

/// Makes the scheme known to the web engine. Once, before the application object is made.
void RegisterTileScheme();

/// The file of that name, in the order of the folders, then among the single files; nothing for a name that
/// is no plain file name ending in ".png" (letters, digits, "_", "-", "." not first; at most 64 characters)
/// and for a missing file.
std::optional<std::filesystem::path> FindServedFile(const TileFiles& files, std::string_view name);

/// Serves `tile:///NAME.png`, read-only. The form with three slashes is the one to use: there is no host, and
/// NAME keeps its case. A page that came over http may show these images; it can neither read their pixels
/// nor fetch them by script.
class TileSchemeHandler : public QWebEngineUrlSchemeHandler {
 public:
  explicit TileSchemeHandler(TileFiles files);
  void requestStarted(QWebEngineUrlRequestJob* job) override;

 private:
  TileFiles files_;
};

}  // namespace pallomir
