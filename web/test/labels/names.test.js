import assert from 'node:assert/strict';
import test from 'node:test';
import { overlap } from '../../src/base/clipping.js';
import { LabelPlacement } from '../../src/labels/label_placement.js';
import { encodeNames, NameFile } from '../../src/labels/name_file.js';
import { NameGrid } from '../../src/labels/name_grid.js';
import { milesBetween, PlaceFinder } from '../../src/labels/place.js';
import { positionText } from '../../src/base/positions.js';
import { worldX, worldY } from '../../src/base/earth.js';
import { thinOut } from '../../tools/names_step.js';

function entry(name, latitude, longitude, more = {}) {
  const place = { x: worldX(longitude), y: worldY(latitude) };
  return { name, ...place, region: '', minZoom: 2, maxZoom: 22, kind: 'town', ...more };
}

function fileOf(entries) {
  return new NameFile(encodeNames(entries).buffer);
}

const AROUND_BETHLEHEM = [
  entry('Allentown', 40.6084, -75.4902, { region: 'PA', kind: 'city' }),
  entry('Bethlehem', 40.6259, -75.3705, { region: 'PA' }),
  entry('Pretoria', -25.7449, 28.1878, { region: 'South Africa', kind: 'capital' }),
  entry('Nukuʻalofa', -21.1394, -175.2032, { region: 'Tonga', kind: 'capital' }),
  entry('Northampton', 40.7, -75.3, { kind: 'county' }),
  entry('West Side', 40.6262, -75.38, { region: 'PA', kind: 'quarter' }),
];

/** Numbers from 0 to 1, always the same ones. */
function randomFrom(seed) {
  return () => (seed = (seed * 16807) % 2147483647) / 2147483647;
}

test('names: what is written is read, letters of every script too', () => {
  const file = fileOf(AROUND_BETHLEHEM);
  assert.equal(file.count, AROUND_BETHLEHEM.length);
  AROUND_BETHLEHEM.forEach((each, index) => {
    assert.deepEqual([file.name(index), file.regionOf(index)], [each.name, each.region]);
    assert.deepEqual([file.kindOf(index), file.minZoom[index]], [each.kind, each.minZoom]);
    assert.ok(Math.abs(file.worldX(index) - each.x) < 1e-9 && Math.abs(file.worldY(index) - each.y) < 1e-9);
  });
});

test('names: a file that is cut short is refused', () => {
  const bytes = encodeNames(AROUND_BETHLEHEM);
  for (const length of [2, 40, bytes.length - 1]) {
    assert.throws(() => new NameFile(bytes.slice(0, length).buffer), `${length} bytes`);
  }
});

test('grid: finds what lies in a box, also across the date line, and does not go around the world again and again', () => {
  const names = fileOf(AROUND_BETHLEHEM);
  const found = (level, box) => {
    const out = [];
    const note = (index, turn) => out.push(`${names.name(index)}${turn}`);
    new NameGrid(names, level, () => true).visit(box, note);
    return out.sort();
  };
  const world = { left: 0, right: 0.9999, top: -1, bottom: 2 };
  const tonga = { left: 0.99, right: 1.02, top: 0.5, bottom: 0.6 };
  for (const level of [0, 1, 5, 9, 15]) {
    assert.equal(found(level, world).length, AROUND_BETHLEHEM.length, `level ${level}`);
    const turns = found(level, { ...world, right: 99 }).length / AROUND_BETHLEHEM.length;
    assert.ok(turns <= 2, 'not turn after turn');
  }
  assert.deepEqual(found(9, tonga), ['Nukuʻalofa1']);
  assert.deepEqual(found(9, { ...tonga, left: -0.01, right: 0.02 }), ['Nukuʻalofa0']);
});

test('places: distance and wind from the nearest one that has people', () => {
  const finder = new PlaceFinder(fileOf(AROUND_BETHLEHEM));
  const table = [
    [40.6495, -75.3396, '2.3 mi NE of Bethlehem, PA'],
    [40.7, -75.4, '5.3 mi NNW of Bethlehem, PA'],
    [40.6259, -75.3705, 'Bethlehem, PA'],
    [40.6262, -75.38, '0.5 mi W of Bethlehem, PA'],
    [40.6, -75.46, '1.7 mi ESE of Allentown, PA'],
    [-21.1, 179.9, '316 mi W of Nukuʻalofa, Tonga'],
    [-89, 28.1878, '4371 mi S of Pretoria, South Africa'],
    [90, 0, '3411 mi N of Bethlehem, PA'],
  ];
  for (const [latitude, longitude, text] of table) assert.equal(finder.describe(latitude, longitude), text);
});

test('places: the nearest is found however far the search goes', () => {
  const random = randomFrom(7);
  const towns = Array.from({ length: 300 }, (_, index) =>
    entry(`${index}`, random() * 160 - 80, random() * 360 - 180),
  );
  const finder = new PlaceFinder(fileOf(towns));
  for (let round = 0; round < 200; round += 1) {
    const [latitude, longitude] = [random() * 160 - 80, random() * 360 - 180];
    const miles = towns.map(({ x, y }) => {
      const townLatitude = (Math.atan(Math.sinh(Math.PI * (1 - 2 * y))) * 180) / Math.PI;
      return milesBetween(latitude, longitude, townLatitude, (x - 0.5) * 360);
    });
    const more = finder.nearest(latitude, longitude).miles - Math.min(...miles);
    assert.ok(more < 0.1, `${latitude} ${longitude}`);
  }
});

test('places: without any the position is told', () => {
  assert.equal(new PlaceFinder(fileOf([])).describe(40.6259, -75.3703), '40.62590 N, 75.37030 W');
  assert.equal(positionText(-33.5, 151), '33.50000 S, 151.00000 E');
});

/** A crowd of places around one spot, the most important first. */
function crowd(count, spread) {
  const random = randomFrom(11);
  return Array.from({ length: count }, (_, index) =>
    entry(`Place ${index}`, 40 + (random() - 0.5) * spread, -75 + (random() - 0.5) * spread, {
      minZoom: 2 + (index % 12),
      kind: ['city', 'town', 'village', 'county'][index % 4],
      maxZoom: index % 4 === 3 ? 12 : 22,
    }),
  );
}

function placementOf(entries) {
  return new LabelPlacement(fileOf(entries), (text, { height }) => text.length * height * 0.6);
}

/** The boxes of the names on a block of tiles, by name, as seen from each tile. */
function boxesOn(placement, zoom, columns, rows) {
  const seen = new Map();
  for (const x of columns) {
    for (const y of rows) {
      for (const { index, left, top } of placement.forTile({ z: zoom, x, y })) {
        const at = { left: Math.round(left + x * 256), top: Math.round(top + y * 256) };
        const { height } = placement.style(index);
        const box = { ...at, right: at.left + placement.width(index), bottom: at.top + height };
        if (seen.has(index))
          assert.deepEqual(box, seen.get(index), 'neighbouring tiles draw one name in one place');
        seen.set(index, box);
      }
    }
  }
  return seen;
}

test('labels: none covers another, and every tile that one reaches into has it', () => {
  for (const zoom of [5, 8, 11, 13, 15]) {
    const placement = placementOf(crowd(400, 1500 / 2 ** zoom));
    const [column, row] = [Math.floor(worldX(-75) * 2 ** zoom), Math.floor(worldY(40) * 2 ** zoom)];
    const block = (middle) => [-2, -1, 0, 1, 2].map((offset) => middle + offset);
    const boxes = [...boxesOn(placement, zoom, block(column), block(row)).values()];
    assert.ok(boxes.length > 1, `zoom ${zoom}`);
    const isFree = boxes.every((box) => boxes.every((other) => other === box || !overlap(box, other)));
    assert.ok(isFree, `zoom ${zoom}`);
    const tile = { left: column * 256, right: column * 256 + 256, top: row * 256, bottom: row * 256 + 256 };
    const reaching = boxes.filter((box) => overlap(box, tile)).length;
    assert.ok(placement.forTile({ z: zoom, x: column, y: row }).length >= reaching);
  }
});

test('labels: what is shown does not depend on where one looked before', () => {
  const zoom = 9;
  const columns = [147, 148, 149, 150, 151];
  const rows = [192, 193, 194, 195];
  const forth = boxesOn(placementOf(crowd(300, 3)), zoom, columns, rows);
  const back = boxesOn(placementOf(crowd(300, 3)), zoom, [...columns].reverse(), [...rows].reverse());
  assert.deepEqual([...back].sort(), [...forth].sort());
});

test('labels: the most important one has its place, and one at the edge of the world is drawn on both sides', () => {
  const placement = placementOf([
    entry('Great', 0, 179.99),
    entry('Small', 0, 179.98),
    entry('Late', 10, 0, { minZoom: 7 }),
  ]);
  assert.deepEqual([placement.position(4, 0), placement.position(4, 1)], [0, -1]);
  const namesOn = (x) => placement.forTile({ z: 4, x, y: 8 }).map(({ index }) => index);
  assert.deepEqual([namesOn(15), namesOn(0)], [[0], [0]]);
  const late = (z) => placement.forTile({ z, x: 2 ** (z - 1), y: Math.floor(worldY(10) * 2 ** z) }).length;
  assert.deepEqual([late(6), late(7)], [0, 1]);
});

test('thinning: a town in the shadow of a city is not passed over for the village beside it', () => {
  const at = (name, weight, longitude) => ({ name, weight, x: worldX(longitude), y: worldY(40) });
  const places = [at('City', 500000, 0), at('Town', 75000, 0.7), at('Village', 6000, 0.9), at('Farm', 20, 9)];
  thinOut(places);
  const [city, town, village, farm] = places.map(({ minZoom }) => minZoom);
  assert.ok(city < town && town < village, `${city} ${town} ${village}`);
  assert.equal(farm, 12);
});
