/** Makes the pictures of the earth on the plane of the map, and finds lakes on them that the atlas lacks. */
import { shapeOf } from '../src/base_map/world_shapes.js';
import {
  fillIn,
  mapPoints,
  maskOf,
  mercatorLatitude,
  outlines,
  Raster,
  shrunk,
  toMercator,
} from './raster.js';

/** @typedef {import('../src/base_map/world_shapes.js').Shape} Shape */

/**
 * Fresh water is nearly black on the picture, 0..255; everything else is brighter. A point that is half shore
 * has the brightness in between; some forests have that too, so it counts only at the edge of a lake.
 */
const LAKE_BRIGHTNESS = 15;
const SHORE_BRIGHTNESS = 33;
/** How far from a lake's surest points its shore may lie, points of the picture. */
const SHORE_WIDTH = 2;
/** Nearer to the poles than this it is night in the month of the picture, degrees. */
const NIGHT = 67;
/** The shortest outline of a lake that is taken, points of the picture: smaller ones may be a shadow. */
const SHORTEST_SHORE = 60;

const brightness = ([red, green, blue]) => 0.3 * red + 0.6 * green + 0.1 * blue;

function isBlue(point) {
  const [red, green, blue] = point;
  return blue > red + 10 && blue > green + 4 && brightness(point) < 140;
}

/** A lake, its shore or a shadow. */
function isDark(point) {
  return brightness(point) < SHORE_BRIGHTNESS - 9;
}

/** Lighter in the dark parts and less glaring in the bright ones, so that tracks of every colour show. */
function softened(point, out) {
  const tone = (value) => 50 + 168 * (value / 255) ** 0.64;
  const grey = tone(brightness(point));
  for (let channel = 0; channel < 3; channel += 1) out[channel] = 0.72 * tone(point[channel]) + 0.28 * grey;
}

/** The mask with all points added that lie near one of it. */
function widened(mask, size) {
  const wide = new Uint8Array(mask.length);
  mask.forEach((isIn, at) => {
    if (!isIn) return;
    for (let down = -SHORE_WIDTH; down <= SHORE_WIDTH; down += 1) {
      const from = at + down * size - SHORE_WIDTH;
      wide.fill(1, Math.max(0, from), from + 2 * SHORE_WIDTH + 1);
    }
  });
  return wide;
}

/** The outlines of the fresh water on a picture, as rings on the unit world. */
function lakesOn(flat, isLand) {
  const { width, height } = flat;
  const isLit = (row) => Math.abs(mercatorLatitude((row + 0.5) / height)) < NIGHT;
  const trace = (limit, mayBe) => {
    const depth = mapPoints(flat, 1, (point, out, column, row) => {
      const at = row * width + column;
      out[0] = isLand[at] && isLit(row) && mayBe(at) ? Math.max(-limit, limit - brightness(point)) : -limit;
    });
    return outlines(smoothed(depth), SHORTEST_SHORE).map(shapeOf);
  };
  const sure = trace(LAKE_BRIGHTNESS, () => true);
  const isNear = widened(maskOf(sure, width), width);
  return trace(SHORE_BRIGHTNESS, (at) => isNear[at] === 1);
}

/** Those of the rings that keep away from a mask. */
function apartFrom(mask, size, rings) {
  const isIn = (x, y) => mask[Math.floor(y * size) * size + Math.floor(x * size)] === 1;
  return rings.filter(({ points }) => {
    for (let at = 0; at < points.length; at += 2) {
      if (isIn(points[at], points[at + 1])) return false;
    }
    return true;
  });
}

/**
 * @param {Raster} globe the earth from above, 2 to 1
 * @param {Shape[]} landRings
 * @param {Shape[]} lakeRings those of the atlas
 * @returns {{land: Raster, sea: Raster, lakes: Shape[]}} land and sea go on
 *     smoothly under each other and the lakes, since the page draws what lies between them; the lakes are
 *     those that the atlas lacks
 */
export function satellitePictures(globe, landRings, lakeRings) {
  const flat = toMercator(globe, globe.width);
  const isLand = maskOf(landRings, flat.width);
  const isKnown = maskOf(lakeRings, flat.width);
  const lakes = apartFrom(widened(isKnown, flat.width), flat.width, lakesOn(flat, isLand));
  const isLake = maskOf(lakeRings.concat(lakes), flat.width);
  const isNearLake = widened(isLake, flat.width);
  const landWeights = new Float32Array(isLand.length);
  const seaWeights = new Float32Array(isLand.length);
  const isWater = (point, at) => isBlue(point) || isLake[at] === 1 || (isNearLake[at] === 1 && isDark(point));
  for (let at = 0; at < isLand.length; at += 1) {
    if (isLand[at] === 1) landWeights[at] = isWater(flat.point(at), at) ? 0 : 1;
    else seaWeights[at] = brightness(flat.point(at)) < 140 ? 1 : 0;
  }
  const land = mapPoints(flat, 3, (point, out) => softened(point, out));
  const sea = mapPoints(flat, 3, ([red, green, blue], out) => {
    out.set([62 + 0.45 * red, 88 + 0.5 * green, 116 + 0.42 * blue]);
  });
  fillIn(land, landWeights);
  fillIn(sea, seaWeights);
  return { land, sea: shrunk(sea, 2), lakes };
}

/** Heights 0..255 to colours, calm ones: [height, red, green, blue]. */
const TINTS = [
  [0, 214, 226, 198],
  [8, 226, 231, 203],
  [24, 238, 231, 204],
  [55, 233, 217, 184],
  [100, 222, 199, 165],
  [150, 208, 187, 161],
  [200, 224, 214, 203],
  [255, 245, 243, 240],
];

function tint(height, out) {
  const above = Math.max(
    1,
    TINTS.findIndex(([limit]) => limit >= height),
  );
  const [low, high] = [TINTS[above - 1], TINTS[above]];
  const share = Math.min(1, Math.max(0, (height - low[0]) / (high[0] - low[0])));
  for (let channel = 0; channel < 3; channel += 1) {
    out[channel] = low[channel + 1] * (1 - share) + high[channel + 1] * share;
  }
}

/** Weighted means of three by three points. */
function smoothed({ width, height, data }) {
  const out = new Raster(width, height, 1);
  for (let row = 0; row < height; row += 1) {
    for (let column = 0; column < width; column += 1) {
      let sum = 0;
      for (let down = -1; down <= 1; down += 1) {
        const from = Math.min(height - 1, Math.max(0, row + down)) * width;
        for (let right = -1; right <= 1; right += 1) {
          const weight = (2 - Math.abs(down)) * (2 - Math.abs(right));
          sum += weight * data[from + ((column + right + width) % width)];
        }
      }
      out.data[row * width + column] = sum / 16;
    }
  }
  return out;
}

/** The ice of Greenland and the Antarctic, which heights alone do not show. */
function isIce(latitude, longitude, height) {
  if (latitude < -62) return true;
  return latitude > 60 && longitude > -57 - (latitude > 75 ? 16 : 0) && longitude < -19 && height > 60;
}

/**
 * @param {Raster} globe heights above the sea, 0..255 in steps of some 30 m, 2 to 1
 * @returns {Raster} colours by height, lit from the north-west
 */
export function reliefPicture(globe) {
  const flat = toMercator(smoothed(globe), globe.width);
  const size = flat.width;
  const height = (column, row) =>
    flat.data[Math.min(size - 1, Math.max(0, row)) * size + ((column + size) % size)];
  return mapPoints(flat, 3, ([own], out, column, row) => {
    const latitude = mercatorLatitude((row + 0.5) / size);
    tint(own, out);
    if (isIce(latitude, (column / size) * 360 - 180, own)) out.set([240, 243, 245]);
    const slopeX = height(column + 1, row) - height(column - 1, row);
    const slopeY = height(column, row + 1) - height(column, row - 1);
    const light = Math.max(-34, Math.min(22, -1.9 * (slopeX + slopeY)));
    for (let channel = 0; channel < 3; channel += 1) out[channel] += light;
  });
}
