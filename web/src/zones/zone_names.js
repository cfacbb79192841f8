/* global L */
/** Numbers and names of the zones, written where the zones have room for them. */
import { clipRing, overlap } from '../base/clipping.js';
import { roomForLine } from './text_room.js';

const WORLD_SIZE = 256;
const FONT = 'bold 12px "DejaVu Sans", Verdana, sans-serif';
/** Height of a line and free space on both sides of it, pixels. */
const LINE = 16;
const GAP = 4;
/** A zone that is narrower or lower than this has no room for the shortest number, pixels. */
const LEAST_WIDTH = 16;
/** More names than this nobody reads. */
const MOST_NAMES = 1000;

export const ZoneNames = L.Layer.extend({
  options: { pane: 'zoneNames' },

  /** @param {import('./zone_list.js').ZoneList} list */
  initialize(list) {
    this._list = list;
    this._hidden = null;
    this._ruler = document.createElement('canvas').getContext('2d');
  },

  onAdd() {
    this._box = L.DomUtil.create('div', 'zone-names', this.getPane());
    this._box.setAttribute('role', 'list');
    this._box.setAttribute('aria-label', 'Zones in view');
    this.updateSoon();
  },

  onRemove() {
    cancelAnimationFrame(this._waiting);
    this._waiting = null;
    this._box.remove();
  },

  getEvents() {
    return { moveend: this.updateSoon, viewreset: this.updateSoon, resize: this.updateSoon };
  },

  /** @param {import('./zone_list.js').Zone|null} zone whose name is not shown */
  setHidden(zone) {
    this._hidden = zone;
    this.updateSoon();
  },

  /** Once for all that comes within one script. */
  updateSoon() {
    if (!this._map || this._waiting) return;
    this._waiting = requestAnimationFrame(() => {
      this._waiting = null;
      this._update();
    });
  },

  _update() {
    const scale = WORLD_SIZE * 2 ** this._map.getZoom();
    const view = this._viewBox(scale);
    const taken = [];
    const names = [];
    for (const zone of this._list.zones) {
      if (zone === this._hidden || zone.section === '' || zone.outline.length < 6) continue;
      const name = this._place(zone, scale, view, taken);
      if (name) names.push(name);
      if (names.length >= MOST_NAMES) break;
    }
    this._box.replaceChildren(...names);
  },

  /** The view on the unit world. */
  _viewBox(scale) {
    const { min, max } = this._map.getPixelBounds();
    return { left: min.x / scale, right: max.x / scale, top: min.y / scale, bottom: max.y / scale };
  },

  _place(zone, scale, view, taken) {
    if (!overlap(zone.box, view) || (zone.box.right - zone.box.left) * scale < LEAST_WIDTH) return null;
    if ((zone.box.bottom - zone.box.top) * scale < LINE) return null;
    const outline = clipRing(zone.outline, view);
    if (outline.length < 6) return null;
    const holes = zone.children.map((child) => child.outline).filter(({ length }) => length >= 6);
    const room = roomForLine(outline, holes, LINE / scale);
    const text = room && this._fitting(zone, room.width * scale - 2 * GAP);
    return text ? this._element(zone, text, room, scale, taken) : null;
  },

  /** Number and name, or the number alone, or nothing. */
  _fitting({ section, description }, width) {
    this._ruler.font = FONT;
    const texts = [`${section} ${description}`.trim(), section];
    return texts.find((text) => this._ruler.measureText(text).width <= width);
  },

  _element({ alert, section, description }, text, room, scale, taken) {
    const [x, y] = [room.x * scale, room.y * scale];
    const half = this._ruler.measureText(text).width / 2;
    const box = { left: x - half, right: x + half, top: y - LINE / 2, bottom: y + LINE / 2 };
    if (taken.some((other) => overlap(other, box))) return null;
    taken.push(box);
    const element = L.DomUtil.create('div', alert ? 'alert' : 'plain');
    element.setAttribute('role', 'listitem');
    element.setAttribute('aria-label', `${alert ? 'Alerted' : 'Non-Alert'} zone ${section} ${description}`);
    L.DomUtil.create('span', '', element).textContent = text;
    L.DomUtil.setPosition(element, L.point(x, y).subtract(this._map.getPixelOrigin()).round());
    return element;
  },
});
