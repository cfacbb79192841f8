/**
 * Clipping of flat coordinate lists [x0, y0, x1, y1, …] to a box.
 *
 * At a high zoom a coast that passes a tile runs on for millions of pixels, beyond what a canvas draws
 * truly; clipped to a little more than the tile it stays small, and its cut edges stay out of sight.
 *
 * @typedef {object} Box
 * @property {number} left @property {number} right
 * @property {number} top @property {number} bottom y grows downwards
 */

/** The four sides: name, which coordinate it limits, and on which side of it "inside" lies. */
const SIDES = [
  { name: 'left', axis: 0, sign: 1 },
  { name: 'right', axis: 0, sign: -1 },
  { name: 'top', axis: 1, sign: 1 },
  { name: 'bottom', axis: 1, sign: -1 },
];

/** The smallest box around a list of points. */
export function boxOf(points) {
  const box = { left: Infinity, right: -Infinity, top: Infinity, bottom: -Infinity };
  for (let at = 0; at < points.length; at += 2) {
    if (points[at] < box.left) box.left = points[at];
    if (points[at] > box.right) box.right = points[at];
    if (points[at + 1] < box.top) box.top = points[at + 1];
    if (points[at + 1] > box.bottom) box.bottom = points[at + 1];
  }
  return box;
}

export function overlap(a, b) {
  return a.left <= b.right && b.left <= a.right && a.top <= b.bottom && b.top <= a.bottom;
}

function contains(outer, inner) {
  return (
    outer.left <= inner.left &&
    inner.right <= outer.right &&
    outer.top <= inner.top &&
    inner.bottom <= outer.bottom
  );
}

function clipSide(points, { axis, sign }, limit) {
  const out = [];
  const other = 1 - axis;
  let previousAt = points.length - 2;
  let previousDepth = sign * (points[previousAt + axis] - limit);
  for (let at = 0; at < points.length; at += 2) {
    const depth = sign * (points[at + axis] - limit);
    if (depth >= 0 !== previousDepth >= 0) {
      const share = previousDepth / (previousDepth - depth);
      const start = points[previousAt + other];
      const crossing = start + share * (points[at + other] - start);
      if (axis === 0) out.push(limit, crossing);
      else out.push(crossing, limit);
    }
    if (depth >= 0) out.push(points[at], points[at + 1]);
    previousAt = at;
    previousDepth = depth;
  }
  return out;
}

/**
 * The part of a closed ring inside a box. A ring around the whole box gives the box.
 * @param {ArrayLike<number>} ring without a repeated last point
 * @param {Box} box
 * @returns {ArrayLike<number>} a ring, empty when nothing is inside; pieces are joined along the box's edge
 */
export function clipRing(ring, box) {
  if (contains(box, boxOf(ring))) return ring;
  let points = ring;
  for (const side of SIDES) {
    points = clipSide(points, side, box[side.name]);
    if (points.length === 0) break;
  }
  return points;
}

/**
 * The part of one segment inside a box.
 * @returns {number[]|null} [x0, y0, x1, y1], or null when the segment misses the box
 */
export function clipSegment(x0, y0, x1, y1, box) {
  const dx = x1 - x0;
  const dy = y1 - y0;
  let from = 0;
  let to = 1;
  for (const [speed, room] of [
    [-dx, x0 - box.left],
    [dx, box.right - x0],
    [-dy, y0 - box.top],
    [dy, box.bottom - y0],
  ]) {
    if (speed === 0 && room < 0) return null;
    if (speed < 0) from = Math.max(from, room / speed);
    if (speed > 0) to = Math.min(to, room / speed);
  }
  if (from > to) return null;
  return [x0 + from * dx, y0 + from * dy, x0 + to * dx, y0 + to * dy];
}

/**
 * The runs of a line's segments that may touch a box; the segments themselves are left whole.
 * @param {ArrayLike<number>} line
 * @param {Box} box
 * @returns {ArrayLike<number>[]} lines
 */
export function cutLine(line, box) {
  if (contains(box, boxOf(line))) return [line];
  const runs = [];
  let run = [];
  for (let at = 2; at < line.length; at += 2) {
    if (segmentIsBeside(line, at, box)) {
      run = [];
      continue;
    }
    if (run.length === 0) {
      run.push(line[at - 2], line[at - 1]);
      runs.push(run);
    }
    run.push(line[at], line[at + 1]);
  }
  return runs;
}

/** Both ends of the segment that ends at an index lie beyond the same side. */
function segmentIsBeside(line, at, box) {
  const x0 = line[at - 2];
  const y0 = line[at - 1];
  const x1 = line[at];
  const y1 = line[at + 1];
  return (
    (x0 < box.left && x1 < box.left) ||
    (x0 > box.right && x1 > box.right) ||
    (y0 < box.top && y1 < box.top) ||
    (y0 > box.bottom && y1 > box.bottom)
  );
}

/**
 * Leaves out each point that lies nearer than a distance to the last kept one, on both axes; the ends stay.
 * @param {ArrayLike<number>} points @param {number} distance
 */
export function thin(points, distance) {
  const out = [points[0], points[1]];
  const end = points.length - 2;
  for (let at = 2; at <= end; at += 2) {
    const nearX = Math.abs(points[at] - out[out.length - 2]) < distance;
    const nearY = Math.abs(points[at + 1] - out[out.length - 1]) < distance;
    if (at === end || !nearX || !nearY) out.push(points[at], points[at + 1]);
  }
  return out;
}
