/**
 * The files of shapes that the build makes and the page loads: rings and lines on the unit world, in steps of
 * 2.4 m at the equator. One file holds the whole world roughly; the other holds it finely, cut into the tiles
 * of one zoom, of which a view needs only a few.
 */
import { ByteReader, ByteWriter } from '../base/byte_stream.js';
import { shapeOf } from './world_shapes.js';

/** Steps across the world. */
const STEPS = 2 ** 24;

/** What a file holds, in its order. Land is closed rings, the others are lines. */
export const LAYER_KINDS = {
  land: 'ring',
  lakes: 'ring',
  rivers: 'line',
  borders: 'line',
  states: 'line',
  counties: 'line',
};

export function encodeLayers(layers) {
  const writer = new ByteWriter();
  let x = 0;
  let y = 0;
  for (const name of Object.keys(LAYER_KINDS)) {
    const shapes = layers[name]?.shapes ?? [];
    writer.unsigned(shapes.length);
    for (const { points } of shapes) {
      writer.unsigned(points.length / 2);
      for (let at = 0; at < points.length; at += 2) {
        const nextX = Math.round(points[at] * STEPS);
        const nextY = Math.round(points[at + 1] * STEPS);
        writer.signed(nextX - x);
        writer.signed(nextY - y);
        x = nextX;
        y = nextY;
      }
    }
  }
  return writer.toBytes();
}

/** @param {ByteReader} reader @returns {Object<string, import('./shape_regions.js').Layer>} */
export function decodeLayers(reader) {
  const place = { x: 0, y: 0 };
  const layers = {};
  for (const [name, kind] of Object.entries(LAYER_KINDS)) {
    const shapes = [];
    for (let left = reader.unsigned(); left > 0; left -= 1) shapes.push(shapeOf(readPoints(reader, place)));
    layers[name] = { kind, shapes };
  }
  return layers;
}

function readPoints(reader, place) {
  const count = reader.unsigned();
  if (count > reader.end - reader.at) throw new RangeError('a shape is longer than its file');
  const points = new Array(2 * count);
  for (let at = 0; at < 2 * count; at += 2) {
    place.x += reader.signed();
    place.y += reader.signed();
    points[at] = place.x / STEPS;
    points[at + 1] = place.y / STEPS;
  }
  return points;
}

/**
 * @param {number} zoom whose tiles the regions are
 * @param {{column: number, row: number, layers: object}[]} regions those that are not empty
 */
export function encodeRegions(zoom, regions) {
  const head = new ByteWriter();
  const bodies = regions.map(({ layers }) => encodeLayers(layers));
  head.unsigned(zoom);
  head.unsigned(regions.length);
  regions.forEach(({ column, row }, index) => {
    head.unsigned(column);
    head.unsigned(row);
    head.unsigned(bodies[index].length);
  });
  bodies.forEach((body) => head.append(body));
  return head.toBytes();
}

/** The fine file: nothing but its table is read before a region is wanted. */
export class RegionFile {
  /** @param {Uint8Array} bytes */
  constructor(bytes) {
    this.bytes = bytes;
    const reader = new ByteReader(bytes);
    this.zoom = reader.unsigned();
    this.places = new Map();
    let start = 0;
    for (let left = reader.unsigned(); left > 0; left -= 1) {
      const key = `${reader.unsigned()}/${reader.unsigned()}`;
      const length = reader.unsigned();
      this.places.set(key, { start, length });
      start += length;
    }
    this.bodies = reader.at;
  }

  /** @returns {Object<string, import('./shape_regions.js').Layer>} what lies in a tile of the file's zoom */
  layers(column, row) {
    const place = this.places.get(`${column}/${row}`);
    if (!place) return decodeLayers(new ByteReader(new Uint8Array(Object.keys(LAYER_KINDS).length)));
    const start = this.bodies + place.start;
    return decodeLayers(new ByteReader(this.bytes, start, start + place.length));
  }
}
