import assert from 'node:assert/strict';
import test from 'node:test';
import { ByteReader, ByteWriter } from '../../src/base/byte_stream.js';
import { boxOf } from '../../src/base/clipping.js';
import { decodeLayers, encodeLayers, encodeRegions, RegionFile } from '../../src/base_map/shape_file.js';
import { ShapeRegions } from '../../src/base_map/shape_regions.js';
import { shapeOf } from '../../src/base_map/world_shapes.js';
import { fillIn, maskOf, outlines, Raster, toMercator } from '../../tools/raster.js';
import { refined } from '../../tools/waters_step.js';

test('bytes: numbers come back, and a file that ends too early is noticed', () => {
  const numbers = [0, 1, -1, 63, -64, 64, 8191, -8192, 2 ** 24, -(2 ** 24), 2 ** 31 - 1, -(2 ** 31)];
  const writer = new ByteWriter();
  numbers.forEach((number) => writer.signed(number));
  const reader = new ByteReader(writer.toBytes());
  for (const number of numbers) assert.equal(reader.signed(), number);
  assert.throws(() => reader.signed(), RangeError);
  assert.throws(() => new ByteReader(Uint8Array.of(255, 255, 255, 255, 255, 255)).unsigned(), RangeError);
});

const STEP = 2 ** -24;
const square = (left, top, size) =>
  shapeOf([left, top, left + size, top, left + size, top + size, left, top + size]);
const LAYERS = {
  land: { kind: 'ring', shapes: [square(0.25, 0.25, 0.5), square(-0.125, 0.125, 0.25)] },
  borders: { kind: 'line', shapes: [shapeOf([0.3, 0.3, 0.7, 0.30001])] },
};

test('shapes: a file gives back every point to one step, and empty layers', () => {
  const layers = decodeLayers(new ByteReader(encodeLayers(LAYERS)));
  assert.deepEqual(Object.keys(layers), ['land', 'lakes', 'rivers', 'borders', 'states', 'counties']);
  assert.deepEqual(layers.land, LAYERS.land);
  assert.deepEqual(layers.counties.shapes, []);
  layers.borders.shapes[0].points.forEach((value, at) =>
    assert.ok(Math.abs(value - LAYERS.borders.shapes[0].points[at]) <= STEP),
  );
});

test('shapes: a damaged file is refused instead of filling the memory', () => {
  const bytes = encodeLayers(LAYERS);
  assert.throws(() => decodeLayers(new ByteReader(bytes.slice(0, -3))), RangeError);
  const endless = new ByteWriter();
  endless.unsigned(1);
  endless.unsigned(2 ** 31);
  assert.throws(() => decodeLayers(new ByteReader(endless.toBytes())), RangeError);
});

test('regions: from the zoom of the fine file on, tiles are drawn from it, also those drawn before', () => {
  const regions = new ShapeRegions(decodeLayers(new ByteReader(encodeLayers({ land: LAYERS.land }))));
  const countLand = (zoom, column, row) => regions.forTile(zoom, column, row).land.shapes.length;
  assert.equal(countLand(8, 128, 128), 1);
  const fine = { land: { kind: 'ring', shapes: [square(0.5, 0.5, 0.01), square(0.511, 0.5, 0.004)] } };
  const file = new RegionFile(encodeRegions(6, [{ column: 32, row: 32, layers: fine }]));
  regions.setDetail(file);
  assert.equal(countLand(3, 4, 4), 1, 'farther away the rough shapes stay');
  assert.equal(countLand(6, 32, 32), 2);
  assert.equal(countLand(9, 257, 256), 1);
  assert.equal(countLand(9, 280, 280), 0, 'what the file does not have is sea');
});

test('rasters: the mask of rings has their area, holes left out', () => {
  const mask = maskOf([square(0.25, 0.25, 0.5), square(0.375, 0.375, 0.25)], 64);
  const area = mask.reduce((a, b) => a + b);
  assert.equal(area, 32 * 32 - 16 * 16);
  assert.deepEqual([mask[32 * 64 + 18], mask[32 * 64 + 32], mask[2]], [1, 0, 0]);
});

test('rasters: outlines run around what is above zero', () => {
  const raster = new Raster(64, 64, 1);
  raster.data.forEach((_, at) => {
    raster.data[at] = 12 - Math.hypot((at % 64) - 31.5, Math.floor(at / 64) - 31.5);
  });
  raster.data[5 * 64 + 5] = 1;
  const rings = outlines(raster, 10);
  assert.equal(rings.length, 1, 'the single point is too small');
  const { left, right, top, bottom } = boxOf(rings[0]);
  for (const width of [right - left, bottom - top]) assert.ok(Math.abs(width * 64 - 24) < 0.2, `${width * 64}`);
});

test('waters: a finer form is taken where it has the whole of it', () => {
  const line = (...coordinates) => ({ type: 'LineString', coordinates });
  const coarse = [line([0, 0], [10, 10]), line([20, 0], [30, 5])];
  const fine = [line([20.02, 0], [24, 1], [29.98, 5]), line([0, 0], [6, 6])];
  assert.deepEqual(refined(coarse, fine), [coarse[0], fine[0]]);
});

test('rasters: holes take the colour around them, and what is known stays', () => {
  const raster = new Raster(16, 16, 1);
  const weights = new Float32Array(256);
  for (let row = 0; row < 16; row += 1) {
    raster.data[row * 16] = weights[row * 16] = 1;
    raster.data[row * 16 + 15] = 3;
    weights[row * 16 + 15] = 1;
  }
  fillIn(raster, weights);
  assert.deepEqual([...raster.data.slice(0, 2)], [1, 1]);
  assert.deepEqual([...raster.data.slice(14, 16)], [3, 3]);
  assert.ok(raster.data.every((value) => value >= 1 && value <= 3));
});

test('rasters: the equator stays in the middle of the map, and a parallel comes to its place', () => {
  const globe = new Raster(8, 180, 1);
  globe.data.forEach((_, at) => (globe.data[at] = 89.5 - Math.floor(at / 8)));
  const flat = toMercator(globe, 256);
  assert.ok(Math.abs(flat.data[127 * 256] - 0.7) < 0.02);
  assert.ok(Math.abs(flat.data[64 * 256] - 66.2) < 0.3, `${flat.data[64 * 256]}`);
  assert.ok(Math.abs(flat.data[0] - 85) < 0.1);
});
