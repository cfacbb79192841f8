import assert from 'node:assert/strict';
import { beforeEach, mock, test } from 'node:test';
import { ZoneDrawing } from '../../src/zones/drawing.js';
import { ShapeHistory } from '../../src/zones/shape_history.js';
import { pairs } from '../pairs.js';

const SQUARE = pairs(0, 0, 0, 10, 10, 10, 10, 0);
const BOW = [SQUARE[0], SQUARE[2], SQUARE[1], SQUARE[3]];
const FAR = [[50, 50]];

/** An outline that the test draws. */
class FakeEditor {
  constructor(_, wishes) {
    Object.assign(this, wishes, { history: new ShapeHistory(), isPlacing: false, turned: 0 });
    FakeEditor.latest = this;
  }

  start = (corners) => (this.corners = corners);

  get ring() {
    return this.corners.map(([lat, lng]) => ({ lat, lng }));
  }

  draw(corners) {
    this.corners = corners;
    this.history.added(0);
    this.changed();
  }

  turn = (turns) => (this.turned += turns);
  stop = () => (this.isStopped = true);
}

class FakeBar {
  addTo = () => this;
  show = (state) => (this.state = state);
  remove = () => {};
}

class FakeKeys {
  enter = () => this.isShown;
  putBack = () => false;
  stop = () => {};
}

let page;
beforeEach(() => {
  mock.timers.reset();
  mock.timers.enable({ apis: ['setTimeout'] });
  const sent = [];
  const shown = new Map();
  const hidden = [];
  const zones = [SQUARE, FAR, []].map((vertices, at) => ({ vertices, isReadable: at !== 2, alert: true }));
  const cornersBut = (ordinal) => zones.filter((_, at) => at !== ordinal).flatMap((each) => each.vertices);
  const parts = {
    map: {
      on: () => {},
      off: () => {},
      getZoom: () => 3,
      getCenter: () => ({ lng: page.centre }),
      doubleClickZoom: { enable: () => (page.zooms = true), disable: () => (page.zooms = false) },
    },
    zones: { list: { zones, cornersBut }, hideOriginal: (ordinal) => hidden.push(ordinal) },
    notices: { show: (key, text) => shown.set(key, text), hide: (key) => shown.delete(key) },
    send: (text) => sent.push(text),
  };
  const tools = { ShapeEditor: FakeEditor, KeyDrawing: FakeKeys, DrawingBar: FakeBar };
  page = { drawing: new ZoneDrawing(parts, tools), shown, hidden, zooms: true, centre: 0 };
  page.take = () => sent.splice(0);
});
const draw = (corners) => FakeEditor.latest.draw(corners);

test('drawing: a new zone goes to the client, and ends with the list that answers it', () => {
  const { drawing, take } = page;
  drawing.startNew();
  assert.equal(page.zooms, false);
  draw(SQUARE.slice(0, 2));
  assert.deepEqual(take(), []);
  drawing.finish();
  assert.match([...page.shown.values()].join(), /three corners/);
  draw(SQUARE.slice(0, 3));
  draw(SQUARE);
  assert.deepEqual(take(), ['z3'], 'closable once');
  drawing.listCleared();
  assert.ok(drawing.editor, 'a list that nobody asked for does not end it');
  drawing.finish();
  const sent = SQUARE.flat().map((value) => `${value}.000000~`);
  assert.deepEqual(take(), ['zF' + sent.join('')]);
  assert.equal(page.shown.size, 0);
  assert.ok(drawing.editor, 'the client may refuse it');
  drawing.listCleared();
  assert.equal(drawing.editor, null);
  assert.ok(FakeEditor.latest.isStopped && page.zooms);
});

test('drawing: an edited zone hides its original until the end, also past a new list', () => {
  const { drawing, take } = page;
  drawing.startEdit(1);
  drawing.listCleared();
  assert.deepEqual(page.hidden, [1, 1]);
  drawing.finish();
  assert.deepEqual(take(), ['zF'], 'one corner only: it keeps what it has');
  drawing.cancel();
  assert.equal(page.hidden.at(-1), null);
  assert.deepEqual(take(), ['zC']);
  drawing.startEdit(2);
  assert.match([...page.shown.values()].join(), /could not be read/);
  drawing.startEdit(0);
  assert.equal(page.shown.size, 0);
  drawing.finish();
  assert.equal(take()[0].split('~').length - 1, 8);
});

test('drawing: what the client wants of nothing is answered with the cancel', () => {
  const { drawing, take } = page;
  drawing.finish();
  drawing.cancel();
  drawing.startEdit(77);
  assert.deepEqual(take(), ['zC', 'zC', 'zC']);
  assert.match([...page.shown.values()].join(), /no such zone/);
  drawing.undo();
  drawing.enter(false);
  drawing.moveCrosshair({ dx: 1, dy: 1 });
  assert.deepEqual(take(), []);
});

test('drawing: the state of the bar', () => {
  const { drawing } = page;
  const expectState = (...expected) => {
    const { title, canUndo, canFinish } = drawing.bar.state;
    assert.deepEqual([title, canUndo, canFinish], expected);
  };
  drawing.startNew();
  expectState('New zone: 0 corners', false, false);
  draw(FAR);
  expectState('New zone: 1 corner', true, false);
  draw(SQUARE);
  expectState('New zone: 4 corners', true, true);
  drawing.startEdit(1);
  expectState('Zone: 1 corner', false, true);
});

test('drawing: a crossing is told once the hand rests, and no longer than it is there', () => {
  const { drawing, shown } = page;
  drawing.startNew();
  for (const end of [() => draw(SQUARE), () => drawing.cancel()]) {
    draw(BOW);
    mock.timers.tick(200);
    assert.equal(shown.size, 0);
    mock.timers.tick(100);
    assert.match([...shown.values()].join(), /crosses itself/);
    end();
    mock.timers.tick(300);
    assert.equal(shown.size, 0);
  }
});

test('drawing: corners of the others attract within eight pixels', () => {
  const { drawing } = page;
  drawing.startEdit(0);
  const pixel = 360 / (256 * 2 ** 3);
  assert.deepEqual(drawing.snap({ lat: 50, lng: 50 + 7.9 * pixel }), { lat: 50, lng: 50 });
  for (const lat of [50, 10]) {
    const free = { lat, lng: 50 + 8.1 * pixel };
    assert.equal(drawing.snap(free), free);
  }
});

test('drawing: Enter without a crosshair finishes; a walk around the world takes the shape along', () => {
  const { drawing, take } = page;
  drawing.startEdit(0);
  for (const isShown of [true, false]) {
    drawing.keys.isShown = isShown;
    drawing.enter(false);
    assert.equal(take().length, isShown ? 0 : 1);
  }
  for (const [centre, turned] of pairs(179, 0, -181, -1, -350, -2)) {
    page.centre = centre;
    drawing.onMoveEnd();
    assert.equal(FakeEditor.latest.turned, turned);
  }
});
