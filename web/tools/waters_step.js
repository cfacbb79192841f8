/** Takes lakes and rivers out of the atlases of waters: one of the world, and finer ones of the continents. */
import { linesOf, ringsOf } from '../src/base_map/world_shapes.js';

/** @typedef {import('../src/base_map/world_shapes.js').Shape} Shape */

/** The atlases' file names: the coarse one first. */
export const WATER_ATLASES = ['world', 'africa', 'asia', 'europe', 'north-america', 'south-america'];

/** A water is the same on two atlases when the corners of its box differ by no more, degrees. */
const SAME = 0.08;

function positionsOf({ type, coordinates }) {
  const depth = { LineString: 0, MultiLineString: 1, Polygon: 1, MultiPolygon: 2 }[type];
  return coordinates.flat(depth);
}

function cornersOf(geometry) {
  const positions = positionsOf(geometry);
  return [0, 1].flatMap((axis) => {
    const values = positions.map((position) => position[axis]);
    return [Math.min(...values), Math.max(...values)];
  });
}

function areAlike(a, b) {
  return a.every((value, at) => Math.abs(value - b[at]) <= SAME);
}

/**
 * Each water of the coarse list, in the form of a finer list where that has it whole: a continent's atlas cuts
 * what reaches beyond its edge.
 * @param {object[]} coarse geometries @param {object[]} fine geometries
 */
export function refined(coarse, fine) {
  const finer = fine.map((geometry) => ({ geometry, corners: cornersOf(geometry) }));
  return coarse.map((geometry) => {
    const corners = cornersOf(geometry);
    return finer.find((each) => areAlike(each.corners, corners))?.geometry ?? geometry;
  });
}

/**
 * @param {object} topojson the library topojson-client
 * @param {object[]} atlases as WATER_ATLASES names them
 * @returns {{lakes: Shape[], rivers: Shape[]}}
 */
export function watersOf(topojson, atlases) {
  const take = (name) => {
    const [coarse, ...fine] = atlases.map((atlas) =>
      topojson.feature(atlas, atlas.objects[name]).features.map(({ geometry }) => geometry),
    );
    return refined(coarse, fine.flat());
  };
  const lines = (river) => (river.type === 'LineString' ? { coordinates: [river.coordinates] } : river);
  return {
    lakes: take('lakes').flatMap(ringsOf),
    rivers: take('rivers').flatMap((river) => linesOf(lines(river))),
  };
}
