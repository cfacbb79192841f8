import assert from 'node:assert/strict';
import test from 'node:test';
import { boxOf, clipRing, clipSegment, cutLine, thin } from '../../src/base/clipping.js';
import { angleLabel, multiples, stepFor } from '../../src/base_map/graticule_lines.js';
import { ShapeRegions } from '../../src/base_map/shape_regions.js';
import { worldX, worldY } from '../../src/base/earth.js';
import { lineShape, ringShape } from '../../src/base_map/world_shapes.js';
import { pairs } from '../pairs.js';

const BOX = { left: 0, right: 10, top: 0, bottom: 10 };

function area(ring) {
  let sum = 0;
  for (let at = 0; at < ring.length; at += 2) {
    const next = (at + 2) % ring.length;
    sum += ring[at] * ring[next + 1] - ring[next] * ring[at + 1];
  }
  return Math.abs(sum / 2);
}

const rings = [
  ['inside', [2, 2, 4, 2, 4, 4, 2, 4], 4],
  ['beside', [20, 2, 24, 2, 24, 4, 20, 4], 0],
  ['around the box', [-1e9, -1e9, 1e9, -1e9, 1e9, 1e9, -1e9, 1e9], 100],
  ['over one corner', [5, 5, 50, 5, 50, 50, 5, 50], 25],
  ['across, both ends outside', [-100, 4, 100, 4, 100, 6, -100, 6], 20],
  ['passing a corner outside', [-20, 5, -5, -20, -20, -20], 0],
];

test('rings', () => {
  for (const [name, ring, expected] of rings) {
    const clipped = clipRing(ring, BOX);
    assert.ok(Math.abs(area(clipped) - expected) < 1e-6, name);
    const { left, right, top, bottom } = boxOf(clipped);
    if (clipped.length > 0) assert.ok(left >= 0 && right <= 10 && top >= 0 && bottom <= 10, name);
  }
});

test('segments', () => {
  const table = [
    [[2, 2, 8, 8], '2,2,8,8'],
    [[-10, 5, 20, 5], '0,5,10,5'],
    [[5, -10, 5, 20], '5,0,5,10'],
    [[-5, 5, 5, -5], '0,0,0,0'],
    [[-5, 4, 4, -5], undefined],
    [[-5, 11, 15, 11], undefined],
    [[12, 5, 20, 5], undefined],
  ];
  for (const [segment, expected] of table) {
    assert.equal(clipSegment(...segment, BOX)?.join(), expected, String(segment));
  }
});

test('a line falls into the runs that touch the box, and keeps its segments whole', () => {
  assert.deepEqual(cutLine([-5, 5, 5, 5, 15, 5, 15, 50, 20, 50, 20, 5, 5, 6], BOX), [
    [-5, 5, 5, 5, 15, 5],
    [20, 5, 5, 6],
  ]);
  assert.deepEqual(cutLine([20, 20, 30, 30], BOX), []);
});

test('thinning keeps the ends and every larger step', () => {
  assert.deepEqual(thin([0, 0, 0.1, 0, 0.2, 0.1, 5, 0, 5.1, 0], 1), [0, 0, 5, 0, 5.1, 0]);
});

test('a line across the date line goes on beyond the edge of the world', () => {
  const { points, box } = lineShape(pairs(170, 0, -170, 0, 170, 0));
  assert.equal(points[2], worldX(-170) + 1);
  assert.equal(points[4], worldX(170));
  assert.ok(box.right - box.left < 0.1);
});

test('a ring around the pole is closed below the world, any other as it is', () => {
  const polar = ringShape(pairs(-90, -70, 0, -70, 90, -70, 180, -70, -90, -70));
  assert.equal(polar.points.length / 2, 5 + 2);
  assert.ok(polar.box.bottom > 1);
  assert.equal(ringShape(pairs(0, 0, 10, 0, 10, 10, 0, 0)).points.length / 2, 3);
});

/** A land of 40 by 40 degrees across the date line, with a coast around it. */
function regionsOfOneLand() {
  const corners = pairs(160, -20, -160, -20, -160, 20, 160, 20, 160, -20);
  return new ShapeRegions({
    land: { kind: 'ring', shapes: [ringShape(corners)] },
    coasts: { kind: 'line', shapes: [lineShape(corners)] },
  });
}

test('regions: a tile amid the land is all land at every zoom, on both sides of the date line; the sea has none', () => {
  const regions = regionsOfOneLand();
  for (let zoom = 5; zoom <= 22; zoom += 1) {
    const row = 2 ** (zoom - 1);
    for (const column of [0, 2 ** zoom - 1]) {
      const { land, coasts } = regions.forTile(zoom, column, row);
      const size = 2 ** -zoom;
      const [left, top] = [column * size, row * size];
      const tile = { left, right: left + size, top, bottom: top + size };
      const inTile = clipRing(land.shapes[0].points, tile);
      assert.ok(Math.abs(area(inTile) / size ** 2 - 1) < 1e-6, `zoom ${zoom} column ${column}`);
      assert.ok(land.shapes[0].points.length <= 16);
      if (zoom > 7) assert.equal(coasts.shapes.length, 0);
    }
  }
  const { land, coasts } = regions.forTile(9, 256, 256);
  assert.deepEqual([land.shapes, coasts.shapes], [[], []]);
});

test('graticule: at every zoom some lines fall into a small view, but not many', () => {
  for (let zoom = 2; zoom <= 22; zoom += 1) {
    const pixelsPerDegree = (256 * 2 ** zoom) / 360;
    const step = stepFor(pixelsPerDegree);
    const lines = multiples(step, -75.3703 - 400 / pixelsPerDegree, -75.3703 + 400 / pixelsPerDegree);
    assert.ok(lines.length >= 2 && lines.length <= 8, `zoom ${zoom}: ${lines.length} lines`);
  }
});

test('graticule: labels have the decimals that their step needs', () => {
  const table = [
    [40, 10, '40° N'],
    [-40.5, 0.5, '40.5° S'],
    [0.30000000000000004, 0.1, '0.3° N'],
    [-75.3702, 0.0002, '75.3702° S'],
    [-1e-17, 0.1, '0.0°'],
    [-180, 30, '180°'],
  ];
  for (const [degrees, step, label] of table) assert.equal(angleLabel(degrees, step, 'N', 'S'), label);
});
