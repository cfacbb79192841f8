/* global L */
/** The layer of the track tiles: pictures that the client draws and the page asks for one by one. */
import { isBlank, parseTileFile, tileSuffix, tileUrl } from './tile_names.js';
import { TileImage } from './tile_image.js';

/** How often one tile is asked for again because its answer was of an old generation or unreadable. */
const MAX_REPEATS = 3;

export const TrackLayer = L.GridLayer.extend({
  options: { pane: 'tracks', className: 'tracks' },

  /** @param {import('./tile_questions.js').TileQuestions} questions asked with kind "T" */
  initialize(questions) {
    L.GridLayer.prototype.initialize.call(this);
    this._questions = questions;
    this._generation = null;
    // By suffix: where the world shows twice, one answer fills several tiles.
    this._shown = new Map();
    this.on('tileunload', (event) => this._drop(event.tile));
  },

  createTile(coords) {
    const element = L.DomUtil.create('div');
    const suffix = tileSuffix(coords.z, coords.x, coords.y);
    element.dataset.suffix = suffix;
    const tile = this._shown.get(suffix) || { images: new Map(), repeats: 0 };
    tile.images.set(element, new TileImage(element));
    this._shown.set(suffix, tile);
    this._questions.ask('T', suffix);
    return element;
  },

  /** All tiles have been drawn anew: the old pictures stay until their successors are here. */
  renew(generation) {
    this._generation = generation;
    for (const [suffix, tile] of this._shown) {
      tile.repeats = 0;
      this._questions.ask('T', suffix);
    }
  },

  /** @param {string} suffix @param {string} fileName the client's answer for that tile */
  async fill(suffix, fileName) {
    const tile = this._shown.get(suffix);
    if (!tile) return;
    const readable = await this._showIn(tile, fileName);
    if (!readable || this._isOld(fileName)) this._repeat(suffix);
  },

  async _showIn(tile, fileName) {
    const images = [...tile.images.values()];
    if (isBlank(fileName)) {
      images.forEach((image) => image.clear());
      return true;
    }
    const url = tileUrl(fileName);
    return (await Promise.all(images.map((image) => image.show(url)))).every(Boolean);
  },

  _isOld(fileName) {
    const file = parseTileFile(fileName);
    return file !== null && this._generation !== null && file.generation !== this._generation;
  },

  _repeat(suffix) {
    const tile = this._shown.get(suffix);
    if (!tile || tile.repeats >= MAX_REPEATS) return;
    tile.repeats += 1;
    this._questions.ask('T', suffix);
  },

  _drop(element) {
    const suffix = element.dataset.suffix;
    const tile = this._shown.get(suffix);
    if (!tile) return;
    tile.images.delete(element);
    if (tile.images.size > 0) return;
    this._shown.delete(suffix);
    this._questions.forget('T', suffix);
  },
});
