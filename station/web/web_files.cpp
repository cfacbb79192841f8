#include "station/web/web_files.h"

#include <algorithm>
#include <array>
#include <utility>

namespace pallomir::station {
namespace {

namespace fs = std::filesystem;

// Addresses that are fixed in clients, and their files.
constexpr std::array<std::pair<std::string_view, std::string_view>, 2> kAddresses{{
    {"/fullscreen/index.php", "/fullscreen/index.html"},
    {"/faq", "/fullscreen/faq.html"},
}};

constexpr std::array<std::pair<std::string_view, std::string_view>, 14> kContentTypes{{
    {".html", "text/html; charset=utf-8"},
    {".css", "text/css; charset=utf-8"},
    {".js", "text/javascript; charset=utf-8"},
    {".mjs", "text/javascript; charset=utf-8"},
    {".json", "application/json"},
    {".map", "application/json"},
    {".txt", "text/plain; charset=utf-8"},
    {".svg", "image/svg+xml"},
    {".png", "image/png"},
    {".jpg", "image/jpeg"},
    {".gif", "image/gif"},
    {".ico", "image/x-icon"},
    {".webp", "image/webp"},
    {".woff2", "font/woff2"},
}};

// No part empty, hidden or a step upwards, and no character that means something else to the system.
bool IsPlain(std::string_view path) {
  if (!path.starts_with('/') || path.find('\\') != path.npos || path.find('\0') != path.npos) return false;
  return path.find("//") == path.npos && path.find("/.") == path.npos;
}

bool IsInside(const fs::path& root, const fs::path& file) {
  const auto [rootEnd, fileEnd] = std::ranges::mismatch(root, file);
  return rootEnd == root.end();
}

}  // namespace

std::optional<fs::path> FindWebFile(const fs::path& root, std::string_view path) {
  for (const auto& [address, fileOfIt] : kAddresses)
    if (path == address) path = fileOfIt;
  if (!IsPlain(path)) return std::nullopt;
  std::error_code error;
  const fs::path realRoot = fs::canonical(root, error);
  if (error) return std::nullopt;
  const fs::path file = fs::canonical(realRoot / path.substr(1), error);
  if (error || !IsInside(realRoot, file) || !fs::is_regular_file(file, error)) return std::nullopt;
  return file;
}

std::string ContentType(const fs::path& file) {
  const std::string ending = file.extension().string();
  for (const auto& [known, type] : kContentTypes)
    if (ending == known) return std::string(type);
  return "application/octet-stream";
}

}  // namespace pallomir::station
