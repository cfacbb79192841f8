#include "oracles/literal_rules.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

namespace pallomir::oracles {
namespace {

constexpr double kPi = 3.14159265358979;
constexpr double k2Pi = 6.28318530717958;

// What has no 32-bit integer, as the poles' world Y, ends at the limits.
std::int32_t Round(double value) {
  const double rounded = std::nearbyint(value);
  if (!(rounded < 2147483647.0)) return 2147483647;
  return static_cast<std::int32_t>(std::max(rounded, -2147483648.0));
}

struct Canvas {
  LiteralTiles& tiles;
  int generation;
  int zoom;

  void MarkPixel(std::int32_t px, std::int32_t py, std::uint8_t colour) const {
    char name[64];
    std::snprintf(name, sizeof name, "%04X%02X%06X%06X", generation & 0xFFFF, zoom & 0xFF,
                  (px / 256) & 0xFFFFFF, (py / 256) & 0xFFFFFF);
    tiles[name][static_cast<std::size_t>(px & 255)][static_cast<std::size_t>(py & 255)] = colour;
  }
};

using Offsets = std::vector<std::pair<int, int>>;

Offsets Turned(const Offsets& quarter) {
  Offsets all;
  for (const auto& [dx, dy] : quarter) {
    all.insert(all.end(), {{dx, dy}, {-dy, dx}, {-dx, -dy}, {dy, -dx}});
  }
  return all;
}

const Offsets kReceived =
    Turned({{8, 0}, {8, 1}, {8, 2}, {8, 3}, {7, 4}, {6, 5}, {5, 6}, {4, 7}, {3, 8}, {2, 8}, {1, 8}});
const Offsets kNotReceived =
    Turned({{7, 0}, {7, 1}, {7, 2}, {7, 3}, {6, 4}, {5, 5}, {4, 6}, {3, 7}, {2, 7}, {1, 7}});
const Offsets kEnds = Turned({{6, 0}, {6, 1}, {6, 2}, {6, 3}, {5, 4}, {4, 5}, {3, 6}, {2, 6}, {1, 6}});
const Offsets kWithinEnds =
    Turned({{5, 0}, {5, 1}, {5, 2}, {5, 3}, {4, 4}, {3, 5}, {2, 5}, {1, 5}, {4, 3}, {3, 4}});

void Stamp(const Canvas& canvas, std::pair<int, int> at, const Offsets& shape, std::uint8_t colour) {
  for (const auto& [dx, dy] : shape) canvas.MarkPixel(at.first + dx, at.second + dy, colour);
}

void DrawSegment(const Canvas& canvas, int px0, int py0, int px1, int py1) {
  constexpr std::uint8_t pattern[2][4] = {{2, 2, 3, 3}, {3, 2, 2, 3}};
  const bool isSteep = std::abs(px0 - px1) <= std::abs(py0 - py1);
  // Along the longer side, from the newer end to the older; both ends are left out.
  const int from = isSteep ? py1 : px1, to = isSteep ? py0 : px0;
  const int beside = isSteep ? px1 : py1, slope = isSteep ? px0 - px1 : py0 - py1;
  const int s = to > from ? 1 : -1;
  for (int at = from + s; s > 0 ? at <= to - s : at >= to - s; at += s) {
    const int middle = beside + Round(static_cast<double>(slope) * (at - from) / (to - from));
    const int m = ((at * s + 3) % 4 + 4) % 4;
    for (const int side : {0, 1, -1}) {
      const int across = middle + side;
      canvas.MarkPixel(isSteep ? across : at, isSteep ? at : across, pattern[side == 0 ? 0 : 1][m]);
    }
  }
}

void OfferFast(std::vector<FastPoint>& fastest, const FastPoint& point) {
  if (fastest.back().speed > point.speed) return;
  std::size_t place = 0;
  while (place < fastest.size() && fastest[place].speed >= point.speed) ++place;
  fastest.insert(fastest.begin() + static_cast<std::ptrdiff_t>(place), point);
  while (fastest.size() > 22) fastest.pop_back();
}

std::int32_t WorldX(std::int32_t lng) { return Round((lng / 600000.0 / 360 + 0.5) * 1073741824.0); }

std::int32_t WorldY(std::int32_t lat) {
  const double phi = lat / 600000.0 * kPi / 180;
  const double f = 0.5 - std::log(std::tan(phi) + 1 / std::cos(phi)) / k2Pi;
  return Round(f * 1073741824.0);
}

std::vector<double> Cosines() {
  std::vector<double> cosines;
  for (int i = 0; i <= 1024; ++i) {
    cosines.push_back(std::cos(2 * std::atan(std::exp(kPi - k2Pi * i / 1024)) - kPi / 2));
  }
  return cosines;
}

double Cosine(std::int32_t y) {
  static const std::vector<double> cosines = Cosines();
  return cosines[static_cast<std::size_t>(std::clamp(Round(y / 1048576.0), 0, 1024))];
}

}  // namespace

LiteralPicture LiteralDraw(const TrackDrawing& d, int generation) {
  LiteralPicture picture;
  picture.fastest = {{0, 512, 0}, {0, 0, 0}};
  const Canvas canvas{picture.tiles, generation, d.TileZoom};
  const int u = d.UnitsPerPixel;
  const auto visible = [&](int px, int py) {
    return std::abs(std::int64_t{px} - d.CentreX / u) < d.browser.width + 256 &&
           std::abs(std::int64_t{py} - d.CentreY / u) < d.browser.height + 256;
  };
  std::vector<std::pair<int, int>> received, notReceived;
  for (std::size_t unit = 0; unit < d.units.size(); ++unit) {
    const auto points = d.units[unit];
    if (points.empty()) continue;
    int px0 = points[0].x / u;
    int py0 = points[0].y / u;
    for (std::size_t j = 0; j < points.size(); ++j) {
      const int px = points[j].x / u;
      const int py = points[j].y / u;
      if (visible(px, py)) {
        if (d.ringReceived && (points[j].status & 0x400)) received.emplace_back(px, py);
        if (d.ringNotReceived && (points[j].status & 0x800)) notReceived.emplace_back(px, py);
        OfferFast(picture.fastest, {j + 1, points[j].status & 0x1FF, unit + 1, points[j].time & 0x7FFFFFFF});
        canvas.MarkPixel(px, py, 1);
        for (const int i : {-2, -1, 1, 2}) canvas.MarkPixel(px + i, py, 1);
        for (const int i : {-2, -1, 1, 2}) canvas.MarkPixel(px, py + i, 1);
        if (visible(px0, py0)) DrawSegment(canvas, px0, py0, px, py);
      }
      px0 = px;
      py0 = py;
    }
  }
  for (const auto& at : received) Stamp(canvas, at, kReceived, 4);
  for (const auto& at : notReceived) Stamp(canvas, at, kNotReceived, 1);
  for (int pass = 1; pass <= 2; ++pass) {
    for (const auto& points : d.units) {
      if (points.empty()) continue;
      const std::size_t k = pass == 1 ? 1 : points.size();
      const int px = points[k - 1].x / u;
      const int py = points[k - 1].y / u;
      if (!visible(px, py)) continue;
      for (const Offsets& shape : {kEnds, kWithinEnds}) Stamp(canvas, {px, py}, shape, k == 1 ? 5 : 6);
    }
  }
  return picture;
}

void LiteralMerge(LiteralTrack& track, const std::vector<WireRecord>& wireOrder) {
  std::vector<DataPoint> fresh;
  for (auto r = wireOrder.rbegin(); r != wireOrder.rend(); ++r) {
    const bool possible = std::abs(static_cast<double>(r->latitude)) <= 54'000'000 &&
                          std::abs(static_cast<double>(r->longitude)) <= 108'000'000 &&
                          DecodePackedTime(r->time);
    if (possible) fresh.push_back({r->time, WorldX(r->longitude), WorldY(r->latitude), r->status});
  }
  const auto time = [](const DataPoint& p) { return p.time & 0x7FFFFFFF; };
  std::stable_sort(fresh.begin(), fresh.end(),
                   [&](const auto& a, const auto& b) { return time(a) < time(b); });
  std::vector<DataPoint> out;
  out.reserve(track.rows.size() + fresh.size());
  std::size_t i = 0;
  std::size_t k = 0;
  while (i < track.rows.size() || k < fresh.size()) {
    const bool takeStored =
        k == fresh.size() || (i < track.rows.size() && time(track.rows[i]) <= time(fresh[k]));
    const DataPoint next = takeStored ? track.rows[i++] : fresh[k++];
    if (out.empty() || time(out.back()) != time(next)) out.push_back(next);
  }
  track.rows = std::move(out);
  const std::vector<DataPoint>& rows = track.rows;
  track.miles.assign(rows.size(), 0);
  for (std::size_t j = 1; j < rows.size(); ++j) {
    const double dx = static_cast<double>(rows[j].x) - rows[j - 1].x;
    const double dy = static_cast<double>(rows[j].y) - rows[j - 1].y;
    track.miles[j] =
        track.miles[j - 1] + std::sqrt(dx * dx + dy * dy) * 2.319137565791607e-05 * Cosine(rows[j].y);
  }
}

bool LiteralStream(ByteView stream, const std::function<LiteralTrack*(std::string_view unitId)>& trackOf) {
  while (stream.size() >= 8) {
    const std::uint32_t code = ReadBigEndian32(stream, 0);
    const ByteView payload = stream.subspan(8, ReadBigEndian32(stream, 4));
    std::uint32_t h = 0x5A3C71E9;
    for (const std::uint8_t c : payload) {
      const std::uint32_t x = c ^ h ^ 0x2D9B6C47u;
      h = x >> 13 | x << 19;
    }
    if (h != code) return false;
    std::vector<WireRecord> records;
    for (std::size_t at = 12; at < payload.size(); at += 14)
      records.push_back(
          {ReadBigEndian32(payload, at), static_cast<std::int32_t>(ReadBigEndian32(payload, at + 4)),
           static_cast<std::int32_t>(ReadBigEndian32(payload, at + 8)), ReadBigEndian16(payload, at + 12)});
    if (LiteralTrack* const track = trackOf(AsText(payload.first(12)))) LiteralMerge(*track, records);
    stream = stream.subspan(8 + payload.size());
  }
  return true;
}

}  // namespace pallomir::oracles
