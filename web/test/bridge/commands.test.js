import assert from 'node:assert/strict';
import test from 'node:test';
import * as commands from '../../src/bridge/commands.js';

const { rightClickCommand: rightClick, centreCommand: centre, mouseMoveCommand: mouse } = commands;

const samples = [
  ['status', commands.statusCommand(99), 'S99'],
  ['zoom', commands.zoomCommand(17), 'Z17'],
  ['tile question', commands.tileCommand('T', '1100C800006000'), 'TT1100C800006000'],
  ['right click beside the map', commands.plainRightClickCommand(), 'C'],
  ['right click', rightClick(40.6259, -75.3703), 'F0024375540-045222180'],
  ['right click, whole numbers', rightClick(-0.00000149, 0.0000009), 'F-0000000010000000001'],
  ['right click just west of zero', rightClick(0, -0.0000001), 'F00000000000000000000'],
  ['right click in another turn', rightClick(0, 190), 'F0000000000-102000000'],
  ['right click above the pole', rightClick(89, -180), 'F0051030677-108000000'],
  ['mouse', mouse(7, 1079.6, 40, -75, 9), 'm00007010800024000000-045000000009'],
  ['mouse left of the view', mouse(-3, 0, 0, 0, 22), 'm-00030000000000000000000000000022'],
  ['click', commands.leftClickCommand(12, 345, 40.6259, -75.3703), 'c00012003450040.6259000-075.3703000'],
  ['centre', centre(40.6259, -75.3703), 'M40.6259000,-75.3703000'],
  ['centre near zero has no exponent', centre(1e-9, -1e-9), 'M0.0000000,0.0000000'],
  ['centre after a walk around the world', centre(0, -544.5), 'M0.0000000,175.5000000'],
  ['zone that keeps its outline', commands.zoneShapeCommand([]), 'zF'],
];

for (const [name, command, expected] of samples) {
  test(`command: ${name}`, () => assert.equal(command, expected));
}

test('command: a zone has six decimals and no "-0"', () => {
  const shape = [40.1234564, -75.5, -1e-9, 0.0000006];
  const command = commands.zoneShapeCommand([shape.slice(0, 2), shape.slice(2)]);
  assert.equal(command, 'zF40.123456~-75.500000~0.000000~0.000001~');
});

/** What the client makes of a "G" command, whose browser may have undone some of the escapes on the way. */
function asTheClientReads(command) {
  let rest = command.slice(1);
  let text = '';
  for (let at = rest.indexOf('%'); at >= 0; at = rest.indexOf('%')) {
    text += rest.slice(0, at) + String.fromCharCode(parseInt(rest.slice(at + 1, at + 3), 16));
    rest = rest.slice(at + 3);
  }
  return text.slice(0, -2);
}

test('command: a place reaches the client whole, with or without its escapes', () => {
  const texts = ['40.62590 N, 75.37030 W', 'Main St & 100% Rd', 'Zürich', ''];
  const table = [
    ...texts.map((text) => [text, text]),
    ['Łódź 北', 'Lódz ?'],
    ['Hawaiʻi', "Hawai'i"],
    ['Iğdır', 'Igdir'],
    ['𐍈', '?'],
  ];
  for (const [text, read] of table) {
    const command = commands.placeCommand(text);
    const halfDecoded = command.replace(/%(3[0-9]|4[1-9A-F]|5[0-9A]|2E)/g, decodeURIComponent);
    assert.deepEqual([asTheClientReads(command), asTheClientReads(halfDecoded)], [read, read]);
  }
});
