/**
 * Rings and lines on the unit world: x 0..1 from −180° to 180°, y 0..1 from the north edge of web Mercator
 * to the south edge. They are projected once, when the data has come; drawing then only scales and shifts.
 */
import { boxOf } from '../base/clipping.js';
import { worldX, worldY } from '../base/earth.js';

/** Beyond the south edge, so that an outline along it is never seen. */
const BELOW_THE_WORLD = 1.1;

/**
 * @typedef {object} Shape
 * @property {ArrayLike<number>} points flat x, y pairs; x may leave 0..1 where a shape crosses the date line
 * @property {import('../base/clipping.js').Box} box
 */

/** @returns {Shape} */
export function shapeOf(points) {
  return { points, box: boxOf(points) };
}

/**
 * Projects a list of [longitude, latitude]. A step of more than half the world is one across the date line:
 * the shape goes on beyond the edge instead of running back through the whole world.
 */
function projected(positions) {
  const points = [];
  let turn = 0;
  let last = null;
  for (const [longitude, latitude] of positions) {
    if (last !== null && longitude - last > 180) turn -= 1;
    if (last !== null && longitude - last < -180) turn += 1;
    points.push(worldX(longitude) + turn, worldY(latitude));
    last = longitude;
  }
  return points;
}

/** @param {number[][]} positions [longitude, latitude] pairs @returns {Shape} an open line */
export function lineShape(positions) {
  return shapeOf(projected(positions));
}

/**
 * @param {number[][]} positions a closed ring, the last position repeating the first
 * @returns {Shape} without the repetition; a ring around the south pole is led along below the world
 */
export function ringShape(positions) {
  const points = projected(positions);
  const start = points[0];
  const end = points[points.length - 2];
  if (Math.abs(end - start) < 0.5) points.length -= 2;
  else points.push(end, BELOW_THE_WORLD, start, BELOW_THE_WORLD);
  return shapeOf(points);
}

/** @returns {Shape[]} the rings of a polygon or multi-polygon geometry */
export function ringsOf(geometry) {
  const polygons = geometry.type === 'Polygon' ? [geometry.coordinates] : geometry.coordinates;
  return polygons.flat().map(ringShape);
}

/** @returns {Shape[]} the lines of a multi-line geometry */
export function linesOf(geometry) {
  return geometry.coordinates.map(lineShape);
}
