import assert from 'node:assert/strict';
import test from 'node:test';
import * as fields from '../../src/bridge/fields.js';

const VERTEX = 'T 040.123456-075.500000';

const samples = [
  ['fit', fields.parseFit, '17+040.712800-074.006000', { zoom: 17, latitude: 40.7128, longitude: -74.006 }],
  ['fit, far', fields.parseFit, '99-000.500000+180.000000', { zoom: 99, latitude: -0.5, longitude: 180 }],
  ['fit without sign', fields.parseFit, '17 040.712800-074.006000', null],
  ['fit cut short', fields.parseFit, '17+040.712800-074.00600', null],
  ['fit off the earth', fields.parseFit, '17+090.000001-074.006000', null],
  ['centre', fields.parseCentre, '+040.712800-074.006000', { latitude: 40.7128, longitude: -74.006 }],
  ['centre with a zoom', fields.parseCentre, '17+040.712800-074.006000', null],
  ['centre off the earth', fields.parseCentre, '+040.712800-180.000001', null],
  ['width', fields.parseViewWidth, '1259', 1262],
  ['height', fields.parseViewHeight, '700', 705],
  ['width of a window that is too small', fields.parseViewWidth, '-7', null],
  ['no width', fields.parseViewWidth, '', null],
  ['width zero', fields.parseViewWidth, '0', null],
  ['largest width', fields.parseViewWidth, '16384', 16387],
  ['width beyond', fields.parseViewWidth, '16385', null],
  ['generation', fields.parseGeneration, '002A', '002A'],
  ['generation in small letters', fields.parseGeneration, '002a', null],
  ['on', fields.parseSwitch, 'T', true],
  ['off', fields.parseSwitch, 'False', false],
  ['neither', fields.parseSwitch, 'true', null],
  ['zone without vertices', fields.parseZone, 'FF', { alert: false, vertices: [] }],
  ['zone without an end', fields.parseZone, 'T' + VERTEX, null],
  ['zone with half a vertex', fields.parseZone, `T${VERTEX}T 040.12F`, null],
  ['zone with a vertex that is no number', fields.parseZone, 'TT 040.1234x6-075.500000F', null],
  ['one letter only', fields.parseZone, 'F', null],
  ['nothing', fields.parseZone, '', null],
  ['ordinal', fields.parseOrdinal, '1024', 1024],
  ['ordinal below zero', fields.parseOrdinal, '-1', null],
  ['crosshair to the left and down', fields.parseCrosshairMove, '-0010+0001', { dx: -10, dy: 1 }],
  ['crosshair to the previous corner', fields.parseCrosshairMove, 'P', { corner: -1 }],
  ['crosshair somewhere', fields.parseCrosshairMove, '-010+0001', null],
];

for (const [name, parse, text, expected] of samples) {
  test(`field: ${name}`, () => assert.deepEqual(parse(text), expected));
}

test('field: zone', () => {
  const { alert, vertices } = fields.parseZone(`T${VERTEX}T-005.000000 179.999999F`);
  assert.deepEqual([alert, ...vertices.flat()], [true, 40.123456, -75.5, -5, 179.999999]);
});
