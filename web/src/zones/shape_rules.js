/** What a drawn outline must be like before it can be saved as a zone. Corners are [latitude, longitude], degrees. */

/** The client reads one corner more at most; what came after that would be lost without a word. */
export const MOST_CORNERS = 9998;
export const LEAST_CORNERS = 3;

const TOO_FEW = 'A zone needs at least three corners.';
const TOO_MANY = `A zone can have ${MOST_CORNERS} corners at most.`;
const OVER_THE_DATE_LINE = 'A zone can’t cross the date line (180° E): draw one on each side of it.';

/**
 * Moves a shape as a whole into the one turn of the world that positions are stored in.
 * @returns {number[][]|null} null when no turn holds all of it
 */
export function intoTheWorld(corners) {
  let west = Infinity;
  let east = -Infinity;
  for (const [, longitude] of corners) {
    west = Math.min(west, longitude);
    east = Math.max(east, longitude);
  }
  const shift = 360 * Math.round((west + east) / 720);
  if (west - shift < -180 || east - shift > 180) return null;
  return corners.map(([latitude, longitude]) => [latitude, longitude - shift]);
}

/**
 * What happens to a shape that the user wants to have saved.
 * @param {number[][]} corners
 * @param {{isEdit: boolean, isChanged: boolean}} how an edited zone that was not changed and can't be sent keeps
 *     the outline that it has: no corners are sent then
 * @returns {{corners: number[][]}|{refusal: string}}
 */
export function judgeShape(corners, { isEdit, isChanged }) {
  const fits = corners.length >= LEAST_CORNERS && corners.length <= MOST_CORNERS;
  if (isEdit && !isChanged && !fits) return { corners: [] };
  if (!fits) return { refusal: corners.length < LEAST_CORNERS ? TOO_FEW : TOO_MANY };
  const placed = intoTheWorld(corners);
  return placed ? { corners: placed } : { refusal: OVER_THE_DATE_LINE };
}

/**
 * Whether two edges of a closed outline cross each other. Edges that only touch do not count.
 * @param {number[][]} points [x, y] on a plane
 */
export function crossesItself(points) {
  const edges = points.map((from, index) => edgeOf(from, points[(index + 1) % points.length]));
  const axis = spread(edges, 0) <= spread(edges, 1) ? 0 : 1;
  edges.sort((a, b) => a.low[axis] - b.low[axis]);
  for (let first = 0; first < edges.length; first += 1) {
    for (let second = first + 1; second < edges.length; second += 1) {
      if (edges[second].low[axis] > edges[first].high[axis]) break;
      if (edgesCross(edges[first], edges[second])) return true;
    }
  }
  return false;
}

function edgeOf(from, to) {
  const low = [Math.min(from[0], to[0]), Math.min(from[1], to[1])];
  const high = [Math.max(from[0], to[0]), Math.max(from[1], to[1])];
  return { from, to, low, high };
}

/** How much of the shape's extent on an axis its edges take on average: little means few pairs to compare. */
function spread(edges, axis) {
  let low = Infinity;
  let high = -Infinity;
  let sum = 0;
  for (const edge of edges) {
    low = Math.min(low, edge.low[axis]);
    high = Math.max(high, edge.high[axis]);
    sum += edge.high[axis] - edge.low[axis];
  }
  return high > low ? sum / (high - low) : Infinity;
}

function side(from, to, point) {
  return Math.sign((to[0] - from[0]) * (point[1] - from[1]) - (to[1] - from[1]) * (point[0] - from[0]));
}

function edgesCross(a, b) {
  return (
    side(a.from, a.to, b.from) * side(a.from, a.to, b.to) < 0 &&
    side(b.from, b.to, a.from) * side(b.from, b.to, a.to) < 0
  );
}
