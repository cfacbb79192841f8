import assert from 'node:assert/strict';
import test from 'node:test';
import { TileImage } from '../../src/tiles/tile_image.js';
import { fileNameOf, isBlank, parseTileFile, tileSuffix, tileUrl } from '../../src/tiles/tile_names.js';
import { PATIENCE_MS, SETTLE_MS, TileQuestions } from '../../src/tiles/tile_questions.js';
import { FakeClock } from '../clock.js';

test('tile names: suffixes', () => {
  assert.equal(tileSuffix(17, 13107200 / 256, 6291456 / 256), '1100C800006000');
  assert.equal(tileSuffix(0, 0, 0), '00000000000000');
  assert.equal(tileSuffix(22, 2 ** 22 - 1, 2 ** 22 - 1), '163FFFFF3FFFFF');
});

const answers = [
  ['/home/u/Tiles/00011100C800006000.png', '0001 1100C800006000'],
  ['C:\\Users\\u\\Tiles\\FFFF00000000000000.png', 'FFFF 00000000000000'],
  ['/home/u\\Application Data\\pallomir\\Tiles\\00020C0004A5000604.png', '0002 0C0004A5000604'],
  ['/opt/pallomir\\blank_x.png', null],
  ['Red.png', null],
  ['/x/00011100C80000600.png', null],
  ['/x/00011100C800006000.png.tmp', null],
  ['', null],
];

test('tile names: answers', () => {
  for (const [path, expected] of answers) {
    const tile = parseTileFile(fileNameOf(path));
    assert.equal(tile && `${tile.generation} ${tile.suffix}`, expected, path);
    assert.equal(isBlank(fileNameOf(path)), path.endsWith('blank_x.png'));
  }
});

test('tile names: addresses never leave the folder that the client serves', () => {
  const table = [
    ['00011100C800006000.png', 'tile:///00011100C800006000.png'],
    ['a b#?.png', 'tile:///a%20b%23%3F.png'],
    [fileNameOf('/x/../../etc/passwd'), 'tile:///passwd'],
  ];
  for (const [name, url] of table) assert.equal(tileUrl(name), url);
});

const A = '04000003000005';
const B = '04000004000005';

function startQuestions() {
  const clock = new FakeClock();
  const sent = [];
  const answered = [];
  const onAnswer = (kind, suffix, name) => answered.push(`${kind}${suffix}=${name}`);
  const questions = new TileQuestions((kind, suffix) => sent.push(kind + suffix), onAnswer, clock);
  questions.start();
  return { clock, sent, answered, questions };
}

test('questions: one at a time, tracks before zones, the next as soon as one is answered', () => {
  const { clock, sent, answered, questions } = startQuestions();
  questions.ask('Z', A);
  questions.ask('T', A);
  questions.ask('T', B);
  questions.ask('T', B);
  assert.deepEqual(sent, [], 'a report of the view must be able to go first');
  clock.pass(0);
  assert.deepEqual(sent, ['T' + A]);
  questions.answer('T', '0001' + A + '.png');
  questions.answer('T', 'blank_x.png');
  questions.answer('Z', 'Red.png');
  assert.deepEqual(sent, ['T' + A, 'T' + B, 'Z' + A]);
  assert.deepEqual(answered, [`T${A}=0001${A}.png`, `T${B}=blank_x.png`, `Z${A}=Red.png`]);
  clock.pass(10 * PATIENCE_MS);
  assert.equal(sent.length, 3);
});

test('questions: an answer about another tile or of another kind settles nothing', () => {
  const { clock, answered, questions } = startQuestions();
  questions.answer('T', 'blank_x.png');
  questions.ask('T', A);
  clock.pass(0);
  questions.answer('T', '0001' + B + '.png');
  questions.answer('Z', 'Grn.png');
  assert.deepEqual(answered, []);
});

test('questions: what is not answered is repeated, and a late answer is not taken for the next tile', () => {
  for (const hasLeft of [false, true]) {
    const { clock, sent, answered, questions } = startQuestions();
    questions.ask('T', A);
    clock.pass(0);
    if (hasLeft) questions.forget('T', A);
    questions.ask('T', B);
    clock.pass(PATIENCE_MS);
    assert.deepEqual(sent, ['T' + A, 'T' + A]);
    questions.answer('T', 'blank_x.png');
    questions.answer('T', 'blank_x.png');
    clock.pass(SETTLE_MS);
    assert.equal(sent.at(-1), 'T' + B);
    questions.answer('T', '0001' + B + '.png');
    assert.deepEqual(answered, [...(hasLeft ? [] : [`T${A}=blank_x.png`]), `T${B}=0001${B}.png`]);
  }
});

test('questions: a tile out of view is not asked for, not repeated, and its answer is dropped', () => {
  const { clock, sent, answered, questions } = startQuestions();
  questions.ask('T', A);
  questions.ask('T', B);
  clock.pass(0);
  questions.forget('T', A);
  questions.forget('T', B);
  questions.answer('T', 'blank_x.png');
  clock.pass(3 * PATIENCE_MS);
  assert.deepEqual([sent, answered], [['T' + A], []]);
});

test('questions: a new generation asks again for the tile whose answer is still to come', () => {
  const { clock, sent, questions } = startQuestions();
  questions.ask('T', A);
  clock.pass(0);
  questions.ask('T', A);
  questions.answer('T', '0001' + A + '.png');
  assert.deepEqual(sent, ['T' + A, 'T' + A]);
});

/** Stands for the page: images whose decoding the test ends. */
function fakePage(context) {
  const images = [];
  globalThis.document = {
    createElement: () => {
      const image = {};
      image.decode = () => new Promise((resolve, reject) => Object.assign(image, { resolve, reject }));
      return (images[images.length] = image);
    },
  };
  context.after(() => delete globalThis.document);
  const element = { shown: null, replaceChildren: (image = null) => (element.shown = image) };
  return { images, element };
}

test('pictures: the old one stays until the new one is decoded, for good if that fails', async (context) => {
  const { images, element } = fakePage(context);
  const tile = new TileImage(element);
  const first = tile.show('tile:///1');
  images[0].resolve();
  assert.equal(await first, true);
  const second = tile.show('tile:///2');
  assert.equal(element.shown.src, 'tile:///1');
  images[1].reject(new Error('gone'));
  assert.equal(await second, false);
  assert.equal(element.shown.src, 'tile:///1');
});

test('pictures: one that comes after a newer one or after clearing is not shown', async (context) => {
  const { images, element } = fakePage(context);
  const tile = new TileImage(element);
  const shows = [tile.show('tile:///1'), tile.show('tile:///2')];
  images[1].resolve();
  await shows[1];
  images[0].resolve();
  await shows[0];
  assert.equal(element.shown.src, 'tile:///2');
  const late = tile.show('tile:///3');
  tile.clear();
  images[2].resolve();
  await late;
  assert.equal(element.shown, null);
});
