/* global L */
/**
 * The layer of the client's zone tiles.
 *
 * The client has no picture for most zone tiles; it then names a red or a green placeholder, the same for
 * every tile. That one answer stands for the whole view until the zoom or the tiles change, and is shown as
 * one small mark in a corner.
 */
import { TileImage } from '../tiles/tile_image.js';
import { parseTileFile, tileSuffix, tileUrl } from '../tiles/tile_names.js';

export const ZoneTiles = L.GridLayer.extend({
  options: { pane: 'zones', className: 'zone-tiles' },

  initialize(questions, showMark) {
    L.GridLayer.prototype.initialize.call(this);
    this._questions = questions;
    this._showMark = showMark;
    this._placeholderZoom = null;
    this._shown = new Map();
    this.on('tileunload', (event) => this._drop(event.tile));
  },

  createTile(coords) {
    const element = L.DomUtil.create('div');
    element.dataset.suffix = tileSuffix(coords.z, coords.x, coords.y);
    this._shown.set(element.dataset.suffix, new TileImage(element));
    if (this._placeholderZoom !== coords.z) this._questions.ask('Z', element.dataset.suffix);
    return element;
  },

  renew() {
    this._placeholderZoom = null;
    for (const suffix of this._shown.keys()) this._questions.ask('Z', suffix);
  },

  fill(suffix, fileName) {
    if (parseTileFile(fileName)) {
      this._shown.get(suffix)?.show(tileUrl(fileName));
      return;
    }
    this._shown.get(suffix)?.clear();
    this._placeholderZoom = parseInt(suffix.slice(0, 2), 16);
    this._questions.forgetAll('Z');
    this._showMark(fileName);
  },

  _drop(element) {
    this._shown.delete(element.dataset.suffix);
    this._questions.forget('Z', element.dataset.suffix);
  },
});

/** A corner control that holds the placeholder image. */
export const ZoneMark = L.Control.extend({
  options: { position: 'bottomright' },

  onAdd() {
    this._box = L.DomUtil.create('div', 'zone-mark-box');
    this._box.setAttribute('role', 'img');
    this._image = new TileImage(this._box);
    return this._box;
  },

  async show(fileName) {
    if (!this._map) return;
    const text = /^red\./i.test(fileName) ? 'Top-level zones alert' : 'Top-level zones do not alert';
    this._box.title = text;
    this._box.setAttribute('aria-label', text);
    await this._image.show(tileUrl(fileName));
    this._box.firstElementChild?.classList.add('zone-mark');
  },
});
