import assert from 'node:assert/strict';
import test from 'node:test';
import { CommandSender, FRAME_COUNT } from '../../src/bridge/command_sender.js';
import { FieldQueue } from '../../src/bridge/field_queue.js';
import { FakeClock } from '../clock.js';

function formOf(...names) {
  return { elements: names.map((name) => ({ name, value: '' })) };
}

function recordingQueue(form) {
  const deferred = [];
  const seen = [];
  const queue = new FieldQueue((run) => deferred.push(run));
  queue.watch(form);
  const handlers = {};
  for (const { name } of form.elements) handlers[name] = (text) => seen.push(`${name}=${text}`);
  const runAll = () => {
    while (deferred.length > 0) deferred.shift()();
  };
  return { queue, handlers, seen, runAll };
}

test('fields: every write is handed on in order, equal ones too, and the field is empty then', () => {
  const form = formOf('TxtX', 'TxtZF');
  const { queue, handlers, seen, runAll } = recordingQueue(form);
  queue.start(handlers);
  const [x, zf] = form.elements;
  zf.value = ' ';
  x.value = '900';
  zf.value = ' ';
  assert.equal(zf.value, ' ');
  assert.deepEqual(seen, [], 'nothing may run inside a write');
  runAll();
  assert.deepEqual(seen, ['TxtZF= ', 'TxtX=900', 'TxtZF= ']);
  assert.deepEqual([x.value, zf.value], ['', '']);
  zf.value = ' ';
  runAll();
  assert.equal(seen.length, 4);
});

test('fields: what was written before the page was ready is not lost', () => {
  const form = formOf('TxtX', 'TxtP');
  form.elements[0].value = '640';
  const { queue, handlers, seen, runAll } = recordingQueue(form);
  form.elements[1].value = '+000.000000+000.000000';
  runAll();
  assert.deepEqual(seen, []);
  queue.start(handlers);
  runAll();
  assert.deepEqual(seen, ['TxtX=640', 'TxtP=+000.000000+000.000000']);
});

test('fields: a handler that fails or that writes a field does not stop the others', (context) => {
  context.mock.method(console, 'error', () => {});
  const form = formOf('TxtF', 'TxtR', 'TxtM');
  const { queue, handlers, seen, runAll } = recordingQueue(form);
  handlers.TxtF = () => {
    throw new Error('bad field');
  };
  handlers.TxtR = () => (form.elements[2].value = 'T');
  queue.start(handlers);
  form.elements[0].value = 'x';
  form.elements[1].value = '0001';
  runAll();
  assert.deepEqual(seen, ['TxtM=T']);
});

test('commands: a burst goes out in order, no frame too often, none lost', () => {
  const clock = new FakeClock();
  const sent = [];
  const sender = new CommandSender((frame, command) => sent.push({ frame, command, at: clock.now() }), clock);
  const commands = Array.from({ length: 500 }, (_, index) => 'S' + index);
  commands.forEach((command) => sender.send(command));
  assert.equal(sent[0].command, 'S0', 'the first one at once');
  clock.pass(400);
  sender.send('last');
  clock.pass(5000);
  const inOrder = sent.map(({ command }) => command);
  assert.deepEqual(inOrder, [...commands, 'last']);
  for (let frame = 0; frame < FRAME_COUNT; frame += 1) {
    const times = sent.filter((each) => each.frame === frame).map(({ at }) => at);
    const isPaced = times.slice(1).every((at, index) => at - times[index] >= 50);
    assert.ok(isPaced, 'the browser stops 200 in 10 seconds');
  }
});
