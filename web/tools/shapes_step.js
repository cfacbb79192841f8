/** Makes the two files of shapes from the atlases. */
import { ShapeRegions } from '../src/base_map/shape_regions.js';
import { encodeLayers, encodeRegions } from '../src/base_map/shape_file.js';
import { linesOf, ringsOf } from '../src/base_map/world_shapes.js';

/** @typedef {import('../src/base_map/world_shapes.js').Shape} Shape */

/** From this zoom on the page draws from the fine shapes. */
export const DETAIL_ZOOM = 6;

const between = (a, b) => a !== b;

/** @param {object} topojson the library @param {object} world an atlas of countries */
export function landOf(topojson, world) {
  const { features } = topojson.feature(world, world.objects.land);
  return features.flatMap(({ geometry }) => ringsOf(geometry));
}

function layersOf(topojson, world, usa, { lakes, rivers }) {
  const lines = (topology, name, filter) => ({
    kind: 'line',
    shapes: linesOf(topojson.mesh(topology, topology.objects[name], filter)),
  });
  const stateOf = (county) => county.id.slice(0, 2);
  return {
    land: { kind: 'ring', shapes: landOf(topojson, world) },
    lakes: { kind: 'ring', shapes: lakes },
    rivers: { kind: 'line', shapes: rivers },
    borders: lines(world, 'countries', between),
    states: lines(usa, 'states', between),
    counties: lines(usa, 'counties', (a, b) => between(a, b) && stateOf(a) === stateOf(b)),
  };
}

function detailRegions(layers) {
  const cut = new ShapeRegions(layers);
  const regions = [];
  for (let row = 0; row < 2 ** DETAIL_ZOOM; row += 1) {
    for (let column = 0; column < 2 ** DETAIL_ZOOM; column += 1) {
      const { full } = cut.region(DETAIL_ZOOM, column, row);
      if (Object.values(full).some(({ shapes }) => shapes.length > 0)) {
        regions.push({ column, row, layers: full });
      }
    }
  }
  return regions;
}

/**
 * @param {object} topojson the library topojson-client
 * @param {{rough: object, fine: object, states: object, counties: object}} atlases
 * @param {{lakes: Shape[], rivers: Shape[]}}
 *     waters
 * @returns {{world: Uint8Array, detail: Uint8Array}} the two files' contents
 */
export function shapeFiles(topojson, { rough, fine, states, counties }, waters) {
  const world = layersOf(topojson, rough, counties, waters);
  world.states = { kind: 'line', shapes: linesOf(topojson.mesh(states, states.objects.states, between)) };
  world.counties.shapes = [];
  const detail = layersOf(topojson, fine, counties, waters);
  return { world: encodeLayers(world), detail: encodeRegions(DETAIL_ZOOM, detailRegions(detail)) };
}
