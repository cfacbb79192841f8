import assert from 'node:assert/strict';
import test from 'node:test';
import { parseZoneNames } from '../../src/bridge/fields.js';
import { roomForLine } from '../../src/zones/text_room.js';
import { ZoneFields } from '../../src/zones/zone_fields.js';
import { ZoneList } from '../../src/zones/zone_list.js';

const square = (left, top, right, bottom) => [left, top, right, top, right, bottom, left, bottom];
const TWO_HOLES = [square(0, 0, 30, 90), square(70, 0, 90, 90)];

test('text room: the widest level place that the holes leave free', () => {
  const table = [
    ['square', square(0, 0, 90, 90), [], 10, { x: 45, width: 90 }],
    ['hole on the right', square(0, 0, 90, 90), [square(60, -5, 95, 95)], 10, { x: 30, width: 60 }],
    ['hole that fills it', square(0, 0, 90, 90), [square(0, 0, 90, 90)], 10, null],
    ['two holes', square(0, 0, 90, 90), TWO_HOLES, 10, { x: 50, width: 40 }],
    ['lower than the line', square(0, 0, 90, 8), [], 10, null],
    ['no corners', [], [], 10, null],
    ['two towers', [0, 0, 20, 0, 20, 80, 60, 80, 60, 0, 90, 0, 90, 90, 0, 90], [], 20, { x: 75, width: 30 }],
  ];
  for (const [name, outline, holes, height, expected] of table) {
    const room = roomForLine(outline, holes, height);
    assert.deepEqual(room && { x: room.x, width: room.width }, expected, name);
  }
  assert.equal(roomForLine(square(0, 0, 90, 90), [], 10).y, 45, 'the middle of equal places');
});

test('list: names reach their zones, also past one that could not be read, and tell parents', () => {
  const list = new ZoneList();
  const shape = { alert: true, vertices: [[0, 0]] };
  for (const zone of [shape, null, shape, shape]) list.add(zone);
  list.addNames(parseZoneNames('1 Depot\n1.1\n'));
  list.addNames(parseZoneNames('no number\n2 R&D "x", <b>\n3 nothing there'));
  const named = list.zones.map(({ section, description }) => `${section} ${description}`);
  assert.deepEqual(named, ['1 Depot', '1.1 ', ' ', '2 R&D "x", <b>']);
  assert.deepEqual(list.zones[0].children, [list.zones[1]]);
  assert.equal(list.zones[1].isReadable, false);
  assert.equal(list.cornersBut(0).length, 2);
  assert.equal(list.cornersBut(null).length, 3);
  list.clear();
  list.add(shape);
  list.addNames([{ section: '1', description: 'again' }]);
  assert.equal(list.zones[0].description, 'again');
});

/** A page whose zones and drawing only note what is asked of them. */
function notedPage() {
  const asked = [];
  const noting = (prefix) => {
    const get = (_, name) =>
      name === 'then' ? undefined : (...args) => asked.push([prefix + name, ...args.map(JSON.stringify)].join(' '));
    return new Proxy({}, { get });
  };
  const parts = { zones: noting('zones.'), notices: noting('notices.'), send: (text) => asked.push(text) };
  const fields = new ZoneFields(parts);
  const write = (name, text) => fields.handlers()[name](text);
  return { asked, fields, write, drawing: noting('') };
}
const settled = () => new Promise((resolve) => setImmediate(resolve));

test('fields: what is written before drawing is possible is done then, in order', async (context) => {
  context.mock.method(console, 'error', () => {});
  const { asked, fields, write, drawing } = notedPage();
  const writes = 'TxtZN= |TxtZX=+0010-0001|TxtZX=right|TxtZV= |TxtZV=A|TxtZU= |TxtZE=12|TxtZE=-1|TxtZF= |TxtZC= ';
  for (const each of writes.split('|')) write(...each.split('='));
  await settled();
  assert.deepEqual(asked, []);
  fields.setDrawing(drawing);
  fields.setDrawing(null);
  await settled();
  const done = 'startNew|moveCrosshair {"dx":10,"dy":-1}|enter false|enter true|undo|startEdit 12|finish|cancel';
  assert.equal(asked.join('|'), done);
});

test('fields: a page that can’t draw says so and gives the client its idle state back', async () => {
  const { asked, fields, write } = notedPage();
  fields.setDrawing(null);
  write('TxtZN', ' ');
  await settled();
  assert.match(asked.join(), /^notices.show .*,zC$/);
});

test('fields: an unreadable zone keeps its place, and a new list reaches the drawing', (context) => {
  context.mock.method(console, 'error', () => {});
  const { asked, fields, write, drawing } = notedPage();
  fields.setDrawing(drawing);
  for (const text of ['*', 'garbage', 'FF']) write('TxtZL', text);
  const added = 'zones.add {"alert":false,"vertices":[]}';
  assert.deepEqual(asked, ['zones.clear', 'listCleared', 'zones.add null', added]);
});
