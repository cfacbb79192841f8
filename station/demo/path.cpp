#include "station/demo/path.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <numbers>

namespace pallomir::station {
namespace {

constexpr double kHighwayPieceMeters = 120;
constexpr double kStreetPieceMeters = 25;

// A road between two places that lie far apart is not a smooth arc; it swings by about this share of their
// distance, and by no more than this many metres.
constexpr double kSwingShare = 0.012;
constexpr double kMaxSwingMeters = 220;

double Blend(double a, double b, double c, double d, double t) {  // Catmull-Rom, from b to c
  return 0.5 *
         (2 * b + (c - a) * t + (2 * a - 5 * b + 4 * c - d) * t * t + (3 * b - a - 3 * c + d) * t * t * t);
}

Place Blend(Place a, Place b, Place c, Place d, double t) {
  return {Blend(a.latitude, b.latitude, c.latitude, d.latitude, t),
          Blend(a.longitude, b.longitude, c.longitude, d.longitude, t)};
}

// Sideways metres at share `t` of a leg: nothing at both ends, and a shape that differs from leg to leg.
double Swing(Place from, Place to, double length, double t) {
  constexpr double kTurn = 2 * std::numbers::pi;
  const double phase = kTurn * (from.latitude + to.longitude) * 37;
  const double envelope = std::sin(std::numbers::pi * t);
  const double bends = std::max(1.0, std::floor(length / 9000));
  return std::min(kMaxSwingMeters, kSwingShare * length) * envelope *
         (0.6 * std::sin(kTurn * bends * t + phase) + 0.4 * std::sin(kTurn * bends * 1.7 * t + 2 * phase));
}

// The sideways acceleration in a bend, metres a second squared, and the slowest speed round a corner, metres
// a second.
constexpr double kSidewaysAcceleration = 1.8;
constexpr double kSlowestCorner = 3.0;

void FillHeadingsAndCorners(Path& path) {
  assert(path.size() >= 2);
  for (std::size_t i = 1; i < path.size(); ++i) path[i].heading = Bearing(path[i - 1].place, path[i].place);
  path.front().heading = path[1].heading;
  path.front().cornerSpeed = path.back().cornerSpeed = kSlowestCorner;
  for (std::size_t i = 1; i + 1 < path.size(); ++i) {
    const double turn = std::fabs(std::remainder(path[i + 1].heading - path[i].heading, 360));
    const double radians = std::max(1e-6, turn * std::numbers::pi / 180);
    const double radius = (path[i + 1].distance - path[i - 1].distance) / 2 / radians;
    path[i].cornerSpeed = std::max(kSlowestCorner, std::sqrt(kSidewaysAcceleration * radius));
  }
}

int PiecesOf(double length, double pieceLength) {
  return std::max(2, static_cast<int>(std::ceil(length / pieceLength)));
}

}  // namespace

PathBuilder::PathBuilder(Place start) { path_.push_back({.place = start}); }

void PathBuilder::AddPiece(Place place, double limitMph) {
  const double distance = path_.back().distance + GroundDistance(path_.back().place, place);
  path_.push_back({.place = place, .distance = distance, .speedLimit = limitMph * kMetersPerSecondPerMph});
}

PathBuilder& PathBuilder::Highway(double limitMph, std::initializer_list<Place> places) {
  std::vector<Place> knots{path_.back().place};
  knots.insert(knots.end(), places);
  for (std::size_t i = 1; i < knots.size(); ++i) {
    const Place from = knots[i - 1], to = knots[i];
    const Place before = i >= 2 ? knots[i - 2] : from, after = i + 1 < knots.size() ? knots[i + 1] : to;
    const double length = GroundDistance(from, to);
    const double direction = Bearing(from, to) * std::numbers::pi / 180;
    const int pieces = PiecesOf(length, kHighwayPieceMeters);
    for (int piece = 1; piece <= pieces; ++piece) {
      const double t = static_cast<double>(piece) / pieces;
      const double swing = Swing(from, to, length, t);
      const Place arc = Blend(before, from, to, after, t);
      AddPiece(Moved(arc, swing * std::cos(direction), -swing * std::sin(direction)), limitMph);
    }
  }
  return *this;
}

PathBuilder& PathBuilder::Streets(double limitMph, const std::vector<Place>& crossings) {
  for (const Place& to : crossings) {
    const Place from = path_.back().place;
    const int pieces = PiecesOf(GroundDistance(from, to), kStreetPieceMeters);
    for (int piece = 1; piece <= pieces; ++piece) {
      const double t = static_cast<double>(piece) / pieces;
      AddPiece({std::lerp(from.latitude, to.latitude, t), std::lerp(from.longitude, to.longitude, t)},
               limitMph);
    }
    path_.back().crossing = true;
  }
  return *this;
}

PathBuilder& PathBuilder::Stop(double seconds) {
  path_.back().stopSeconds = seconds;
  return *this;
}

Path PathBuilder::Take() {
  FillHeadingsAndCorners(path_);
  return std::move(path_);
}

Path Reversed(const Path& path) {
  Path reversed(path.rbegin(), path.rend());
  const double length = path.back().distance;
  for (std::size_t i = reversed.size(); i-- > 0;) {
    reversed[i].distance = length - reversed[i].distance;
    reversed[i].speedLimit = i > 0 ? reversed[i - 1].speedLimit : 0;  // a limit is one of a piece
  }
  FillHeadingsAndCorners(reversed);
  return reversed;
}

std::vector<Place> TownGrid::At(std::initializer_list<Crossing> crossings) const {
  const double direction = bearing * std::numbers::pi / 180;
  const double east = std::sin(direction), north = std::cos(direction);
  std::vector<Place> places;
  for (const Crossing& crossing : crossings) {
    const double along = crossing.row * rowMeters, across = crossing.column * columnMeters;
    places.push_back(Moved(origin, along * east + across * north, along * north - across * east));
  }
  return places;
}

}  // namespace pallomir::station
