import assert from 'node:assert/strict';
import { readFileSync, readdirSync } from 'node:fs';
import test from 'node:test';

const SOURCE = new URL('../src/', import.meta.url);
const read = (name) => readFileSync(new URL(name, SOURCE), 'utf8');
const allFiles = readdirSync(SOURCE, { recursive: true }).filter((name) => /\.\w+$/.test(name));

/** A module may import from its own room and from those before it. */
const ROOMS = ['base', 'bridge', 'tiles', 'base_map', 'labels', 'controls', 'zones', '.'];

/** The modules that a module imports at once, by their paths below the source folder. */
function importsOf(name) {
  const texts = [...read(name).matchAll(/^(?:import|export)\b[^;]*?from '(\.[\w./-]+)';/gm)];
  const addresses = texts.map(([, path]) => new URL(path, new URL(name, SOURCE)).href);
  return addresses
    .filter((each) => each.startsWith(SOURCE.href))
    .map((each) => each.slice(SOURCE.href.length));
}

function allImportsOf(name, found = new Set()) {
  for (const imported of importsOf(name)) {
    if (found.has(imported)) continue;
    found.add(imported);
    allImportsOf(imported, found);
  }
  return found;
}

const roomOf = (name) => ROOMS.indexOf(name.includes('/') ? name.split('/')[0] : '.');

test('page: the modules that the start needs, and no others, are named for loading at once', () => {
  const links = [...read('index.html').matchAll(/rel="modulepreload" href="([\w/]+\.js)"/g)];
  const named = links.map(([, name]) => name);
  assert.deepEqual(named.sort(), [...allImportsOf('start_up.js')].sort());
});

test('page: modules import from their own room and from those below it', () => {
  for (const name of allFiles.filter((each) => each.endsWith('.js'))) {
    assert.ok(roomOf(name) >= 0, `${name} is in no known room`);
    for (const imported of importsOf(name)) {
      assert.ok(roomOf(imported) <= roomOf(name), `${name} imports ${imported}`);
    }
  }
});

test('page: nothing is loaded from anywhere but the station', () => {
  for (const name of allFiles.filter((each) => /\.(js|css|html|json)$/.test(each))) {
    if (name === 'faq.html') continue;
    assert.doesNotMatch(read(name), /\bhttps?:|(?:src|href)="\/\/|@import|url\((?!data:)/, name);
  }
});
