#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/bytes.h"
#include "base/data_point.h"
#include "map/tile_renderer.h"
#include "tracking/packets.h"

/// The rules of the data's road written down step by step, without a thought for speed. What the program does
/// must give the same, point for point and pixel for pixel.
namespace pallomir::oracles {

/// A tile's pixels by its name, index [x][y].
using LiteralTiles = std::map<std::string, std::array<std::array<std::uint8_t, 256>, 256>>;

struct LiteralPicture {
  LiteralTiles tiles;
  std::vector<FastPoint> fastest;
};

LiteralPicture LiteralDraw(const TrackDrawing& drawing, int generation);

/// Rows of a unit and the distances beside them.
struct LiteralTrack {
  std::vector<DataPoint> rows;
  std::vector<double> miles;
};

/// A packet's records, in the order of the wire, merged into the track.
void LiteralMerge(LiteralTrack& track, const std::vector<WireRecord>& wireOrder);

/// Whole packets one behind the other, each checked and merged into the track that `trackOf` names for it
/// (none: left out). False where a check code differs.
bool LiteralStream(ByteView stream, const std::function<LiteralTrack*(std::string_view unitId)>& trackOf);

}  // namespace pallomir::oracles
