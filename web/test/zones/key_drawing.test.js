import assert from 'node:assert/strict';
import { beforeEach, test } from 'node:test';
import { KeyDrawing } from '../../src/zones/key_drawing.js';
import { pairs } from '../pairs.js';

class Point {
  constructor(x, y) {
    Object.assign(this, { x, y });
  }
  add = ([x, y]) => new Point(this.x + x, this.y + y);
  subtract = ({ x, y }) => new Point(this.x - x, this.y - y);
  divideBy = (by) => new Point(this.x / by, this.y / by);
  distanceTo = ({ x, y }) => Math.hypot(this.x - x, this.y - y);
}

/** As much of the map library as a crosshair needs; on this map a pixel is a degree, until it is panned. */
globalThis.L = {
  point: (x, y) => new Point(x, y),
  latLng: (lat, lng) => ({ lat, lng }),
  DomUtil: { create: () => ({ style: {}, setAttribute: () => {}, remove: () => {} }) },
  LineUtil: {
    // Edges of the tests are level or upright.
    pointToSegmentDistance: (at, from, to) => {
      const x = Math.max(Math.min(from.x, to.x), Math.min(Math.max(from.x, to.x), at.x));
      const y = Math.max(Math.min(from.y, to.y), Math.min(Math.max(from.y, to.y), at.y));
      return at.distanceTo({ x, y });
    },
  },
};

let page;
beforeEach(() => {
  const origin = new Point(0, 0);
  const done = [];
  const listeners = {};
  const told = (each) => (each?.lat === undefined ? each : `${each.lng},${each.lat}`);
  const tell = (name, ...args) => done.push([name, ...args.map(told)].join(' '));
  const map = {
    on: (type, act, context) => (listeners[type] = act.bind(context)),
    off: (type) => delete listeners[type],
    getContainer: () => null,
    getSize: () => new Point(400, 300),
    panBy: ({ x, y }) => Object.assign(origin, { x: origin.x + x, y: origin.y + y }),
    containerPointToLatLng: ({ x, y }) => ({ lat: y + origin.y, lng: x + origin.x }),
    latLngToContainerPoint: ({ lat, lng }) => new Point(lng - origin.x, lat - origin.y),
  };
  const editor = {
    ring: [],
    isPlacing: true,
    isFull: () => false,
    snapped: (place, mouse) =>
      mouse?.altKey ? place : { lat: Math.round(place.lat / 10) * 10, lng: place.lng },
    aimGuidesAt: (place) => tell('aim', place),
    place: (place) => tell('place', place),
    close: () => tell('close'),
    insert: (index, latlng) => {
      tell('insert', index);
      editor.ring = [...editor.ring.slice(0, index), latlng, ...editor.ring.slice(index)];
    },
    carry: (index, place) => tell('carry', index, place),
    drop: (index, from) => tell('drop', index, from),
  };
  const keys = new KeyDrawing(map, editor);
  const pointer = (clientX, clientY) => listeners.mousemove({ originalEvent: { clientX, clientY } });
  page = { keys, editor, origin, pointer, listeners, take: () => done.splice(0) };
});
const SQUARE = pairs(100, 100, 200, 100, 200, 200, 100, 200).map(([lng, lat]) => ({ lat, lng }));

test('keys: the crosshair begins in the middle, and at the edge the map moves', () => {
  const { keys, origin, take } = page;
  keys.move({ dx: 50, dy: 0 });
  assert.deepEqual([keys.crosshair.point.x, keys.crosshair.point.y], [200, 150]);
  keys.move({ dx: 100, dy: 3 });
  assert.deepEqual(take(), ['aim 200,150', 'aim 300,150']);
  keys.move({ dx: 100, dy: -200 });
  assert.deepEqual([keys.crosshair.point.x, keys.crosshair.point.y], [376, 24]);
  assert.deepEqual([origin.x, origin.y], [24, -71]);
});

test('keys: Enter places, free or clinging, and closes at either end; without a crosshair it is not for us', () => {
  const { keys, editor, take } = page;
  assert.equal(keys.enter(false), false);
  keys.move({ dx: 0, dy: 0 });
  keys.move({ dx: 0, dy: 4 });
  take();
  assert.equal(keys.enter(false), true);
  assert.equal(keys.enter(true), true);
  assert.deepEqual(take(), ['place 200,150', 'place 200,154']);
  for (const [count, index] of pairs(2, 1, 3, 2, 3, 0, 3, 1)) {
    editor.ring = SQUARE.slice(0, count);
    keys.crosshair.moveToPlace(SQUARE[index]);
    keys.enter(false);
    const isEnd = count === 3 && index !== 1;
    assert.equal(take()[0].split(' ')[0], isEnd ? 'close' : 'place', `${count} corners, at ${index}`);
    assert.equal(keys.crosshair.isShown, !isEnd);
  }
});

test('keys: corners are taken up, carried, put down or back; an edge gives a new one', () => {
  const { keys, editor, take } = page;
  Object.assign(editor, { ring: SQUARE, isPlacing: false });
  keys.move({ corner: -1 });
  keys.move({ corner: 1 });
  keys.move({ corner: 1 });
  assert.deepEqual([keys.crosshair.point.x, keys.crosshair.point.y], [200, 100]);
  keys.enter(false);
  keys.move({ dx: 7, dy: 13 });
  keys.enter(false);
  assert.deepEqual(take(), ['carry 1 207,110', 'drop 1 200,100']);
  assert.equal(keys.enter(false), false, 'again at once: finished');
  assert.equal(keys.carried, null);
  keys.putBack();
  keys.crosshair.moveToPlace({ lat: 100, lng: 200 });
  assert.equal(keys.enter(false), true, 'what was taken back is no end');
  keys.putBack();
  take();
  keys.crosshair.moveToPlace({ lat: 204, lng: 195 });
  keys.enter(false);
  keys.move({ dx: -3, dy: 1 });
  assert.equal(keys.putBack(), true);
  assert.equal(keys.putBack(), false);
  assert.deepEqual(take(), ['carry 2 192,210', 'carry 2 200,200']);
  keys.crosshair.moveToPlace({ lat: 150, lng: 107 });
  keys.enter(false);
  keys.move({ dx: 0, dy: 4 });
  keys.enter(true);
  const acts = take().map((act) => act.split(' ', 2).join(' '));
  assert.deepEqual(acts, ['insert 4', 'carry 4', 'carry 4', 'drop 4']);
  keys.crosshair.moveToPlace({ lat: 150, lng: 150 });
  keys.move({ dx: 0, dy: 0 });
  assert.equal(keys.enter(false), true, 'nothing lies there, and it has moved on');
  assert.equal(keys.carried, null);
});

test('keys: the pointer takes over only when it moves, and not from a carried corner', () => {
  const { keys, editor, pointer, listeners } = page;
  Object.assign(editor, { ring: SQUARE, isPlacing: false });
  pointer(10, 10);
  keys.move({ corner: 1 });
  pointer(90, 90);
  pointer(91, 91);
  assert.ok(keys.crosshair.isShown);
  keys.enter(false);
  pointer(120, 90);
  assert.ok(keys.crosshair.isShown);
  keys.putBack();
  pointer(10, 10);
  pointer(10, 20);
  assert.ok(!keys.crosshair.isShown);
  keys.stop();
  assert.deepEqual(listeners, {});
});
