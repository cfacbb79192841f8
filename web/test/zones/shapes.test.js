import assert from 'node:assert/strict';
import test from 'node:test';
import { chooseHandles } from '../../src/zones/handles.js';
import { ShapeHistory } from '../../src/zones/shape_history.js';
import { crossesItself, judgeShape, MOST_CORNERS } from '../../src/zones/shape_rules.js';
import { SnapIndex } from '../../src/zones/snap_index.js';
import { pairs } from '../pairs.js';

const triangle = (west) => pairs(0, west, 0, west + 2, 1, west + 1);
const circle = (count, radius, x, y) =>
  Array.from({ length: count }, (_, at) => (2 * Math.PI * at) / count).map((angle) => [
    x + radius * Math.cos(angle),
    y + radius * Math.sin(angle),
  ]);
const many = (count) => circle(count, 50, 0, 0);

const verdicts = [
  ['new, as drawn', triangle(10), {}, triangle(10)],
  ['new, in the next turn of the world', triangle(181), {}, triangle(-179)],
  ['new, two turns to the west', triangle(-721), {}, triangle(-1)],
  ['new, up to the date line', triangle(178), {}, triangle(178)],
  ['new, over the date line', triangle(179), {}, /date line/],
  ['new, over the date line from the west', triangle(-181), {}, /date line/],
  ['two corners', triangle(0).slice(1), {}, /three corners/],
  ['as many corners as can be read', many(MOST_CORNERS), {}, many(MOST_CORNERS)],
  ['one more', many(MOST_CORNERS + 1), {}, /9998/],
  ['edited, unchanged, without corners', [], { isEdit: true }, []],
  ['edited, unchanged, too large to send', many(MOST_CORNERS + 1), { isEdit: true }, []],
  ['edited, changed, too large to send', many(MOST_CORNERS + 1), { isEdit: true, isChanged: true }, /9998/],
  ['changed to two corners', triangle(0).slice(1), { isEdit: true, isChanged: true }, /three corners/],
  ['edited, unchanged', triangle(0), { isEdit: true }, triangle(0)],
];
for (const [name, corners, how, expected] of verdicts) {
  test(`shape: ${name}`, () => {
    const { corners: sent, refusal } = judgeShape(corners, { isEdit: false, isChanged: false, ...how });
    if (expected instanceof RegExp) assert.match(refusal, expected);
    else assert.deepEqual(sent, expected);
  });
}

test('shape: a crossing is found wherever it is, a touch is none', () => {
  const wave = Array.from({ length: 3000 }, (_, at) => [at, at % 2]);
  const table = [
    ['bow', [0, 0, 1, 1, 1, 0, 0, 1], true],
    ['bow on its side', [0, 0, 1, 0, 0, 1, 1, 1], true],
    ['square', [0, 0, 1, 0, 1, 1, 0, 1], false],
    ['two squares that touch in a corner', [0, 0, 1, 0, 1, 1, 2, 1, 2, 2, 1, 2, 1, 1, 0, 1], false],
    ['no area', [0, 0, 5, 0, 9, 0], false],
    ['saw', [...wave, [2999, -5], [0, -5]].flat(), false],
    ['saw with a tooth through the ground', [...wave, ...pairs(1500.5, -5, 1500.4, 3, 0, -5)].flat(), true],
    ['saw upright', [...wave, [2999, -5], [0, -5]].map(([x, y]) => [y, x]).flat(), false],
  ];
  for (const [name, flat, expected] of table) assert.equal(crossesItself(pairs(...flat)), expected, name);
});

test('snapping: the nearest corner within reach, in the turn that is asked about', () => {
  const index = new SnapIndex(pairs(10, 20, 10, 20.5, -10, 20.1, 0, -179.9));
  const reach = 0.3 / 360;
  const table = [
    [10, 20.26, [10, 20.5]],
    [10, 20.24, [10, 20]],
    [10, 20.81, null],
    [10.2, 19.85, [10, 20]],
    [10, 380.1, [10, 380]],
    [9.5, 20, null],
    [0, 180.2, [0, 180.1]],
  ];
  for (const [latitude, longitude, expected] of table) {
    const found = index.nearest(latitude, longitude, reach);
    const place = found && [found.latitude, Number(found.longitude.toFixed(9))];
    assert.deepEqual(place, expected, `${latitude} ${longitude}`);
  }
  assert.equal(new SnapIndex([]).nearest(0, 0, 1), null);
});

test('handles: only in view; of very many some, the ends among them', () => {
  const size = { x: 500, y: 400 };
  const few = pairs(0, 0, 500, 400, 501, 3, 4, -1, 4, 4).map(([x, y]) => ({ x, y }));
  assert.deepEqual(chooseHandles(few, size), [0, 1, 4]);
  const dense = circle(9000, 180, 250, 200).map(([x, y]) => ({ x, y }));
  const chosen = chooseHandles(dense, size);
  assert.ok(chosen.length <= 200 && chosen.length > 60, `${chosen.length} handles`);
  assert.ok(chosen.includes(0) && chosen.includes(8999));
  assert.ok(chooseHandles(new Array(1000).fill({ x: 5, y: 5 }), size).length <= 2);
});

test('history: every step goes back to the ring before it', () => {
  const history = new ShapeHistory();
  const ring = [];
  const before = [];
  const add = (name) => () => {
    ring.push(name);
    history.added(ring.length - 1);
  };
  const close = () => history.closed();
  const move = () => {
    ring[2] = 'C';
    history.moved(2, 'c');
  };
  const remove = () => {
    ring.splice(1, 1);
    history.removed(1, 'b');
  };
  const insertAndMove = () => {
    ring.splice(0, 0, 'n');
    history.added(0);
    history.moved(0, 'm', true);
  };
  for (const act of [add('a'), add('b'), add('c'), add('d'), close, move, remove, insertAndMove]) {
    before.push([...ring]);
    act();
  }
  assert.ok(history.isChanged);
  const kinds = [];
  while (before.length > 0) {
    kinds.push(history.undo(ring));
    assert.deepEqual(ring, before.pop());
  }
  assert.deepEqual(kinds, ['added', 'removed', 'moved', 'closed', 'added', 'added', 'added', 'added']);
  assert.equal(history.undo(ring), null);
  assert.equal(history.isChanged, false);
});

test('history: a corner that comes and goes within one gesture leaves no step', () => {
  const history = new ShapeHistory();
  history.added(1);
  history.removed(1, 'x', true);
  assert.ok(history.isEmpty);
});
