import assert from 'node:assert/strict';
import { readFileSync, readdirSync } from 'node:fs';
import test from 'node:test';

const SOURCE = new URL('../src/', import.meta.url);
const read = (name) => readFileSync(new URL(name, SOURCE), 'utf8');

function importsOf(name, found = new Set()) {
  for (const [, imported] of read(name).matchAll(/^(?:import|export)\b[^;]*?from '\.\/(\w+\.js)';/gm)) {
    if (found.has(imported)) continue;
    found.add(imported);
    importsOf(imported, found);
  }
  return found;
}

test('page: the modules that the start needs, and no others, are named for loading at once', () => {
  const named = [...read('index.html').matchAll(/rel="modulepreload" href="(\w+\.js)"/g)].map(
    ([, name]) => name,
  );
  assert.deepEqual(named.sort(), [...importsOf('start_up.js')].sort());
});

test('page: nothing is loaded from anywhere but the station', () => {
  for (const name of readdirSync(SOURCE).filter((each) => /\.(js|css|html|json)$/.test(each))) {
    if (name === 'faq.html') continue;
    assert.doesNotMatch(read(name), /\bhttps?:|(?:src|href)="\/\/|@import|url\((?!data:)/, name);
  }
});
