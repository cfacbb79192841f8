/* global L */
/** The net of meridians and parallels with its labels, drawn over the base map for the view as a whole. */
import { angleLabel, multiples, stepFor } from './graticule_lines.js';

const EDGE = 4;
/** The labels stand beside the zoom buttons and above the scale bar. */
const LABEL_LEFT = 50;
const LABEL_BOTTOM = 48;
/** In a small view (see page.css) the orientation stands above the scale bar too. */
const SMALL = { width: 800, labelBottom: 72 };
const FONT = '11px "DejaVu Sans", Verdana, sans-serif';

function labelBottom({ x }) {
  return x <= SMALL.width ? SMALL.labelBottom : LABEL_BOTTOM;
}

export const Graticule = L.Layer.extend({
  options: { pane: 'graticule' },

  initialize(palette) {
    this._palette = palette;
  },

  onAdd() {
    this._canvas = L.DomUtil.create('canvas', '', this.getPane());
    this._draw();
  },

  onRemove() {
    this._canvas.remove();
  },

  getEvents() {
    return { move: this._draw, moveend: this._draw, viewreset: this._draw, resize: this._draw };
  },

  setPalette(palette) {
    this._palette = palette;
    if (this._map) this._draw();
  },

  _draw() {
    const size = this._map.getSize();
    const context = this._prepare(size);
    for (const { x, text } of this._meridians(size)) {
      this._line(context, [x, 0], [x, size.y]);
      this._label(context, text, x + EDGE, size.y - labelBottom(size));
    }
    for (const { y, text } of this._parallels(size)) {
      this._line(context, [0, y], [size.x, y]);
      if (y < size.y - labelBottom(size) - EDGE) this._label(context, text, LABEL_LEFT, y - EDGE);
    }
  },

  /** The canvas lies in a pane that pans; it is put back over the view, and drawn anew. */
  _prepare(size) {
    const density = Math.ceil(window.devicePixelRatio || 1);
    this._canvas.width = size.x * density;
    this._canvas.height = size.y * density;
    this._canvas.style.width = size.x + 'px';
    this._canvas.style.height = size.y + 'px';
    L.DomUtil.setPosition(this._canvas, this._map.containerPointToLayerPoint([0, 0]));
    const context = this._canvas.getContext('2d');
    context.scale(density, density);
    context.font = FONT;
    return context;
  },

  _meridians(size) {
    const west = this._map.containerPointToLatLng([0, 0]).lng;
    const east = this._map.containerPointToLatLng([size.x, 0]).lng;
    const step = stepFor(size.x / (east - west));
    return multiples(step, west, east).map((longitude) => ({
      x: this._map.latLngToContainerPoint([0, longitude]).x,
      text: angleLabel(L.Util.wrapNum(longitude, [-180, 180], true), step, 'E', 'W'),
    }));
  },

  _parallels(size) {
    const north = this._map.containerPointToLatLng([0, 0]).lat;
    const south = this._map.containerPointToLatLng([0, size.y]).lat;
    const step = stepFor(size.y / (north - south));
    return multiples(step, south, north)
      .filter((latitude) => Math.abs(latitude) <= 85)
      .map((latitude) => ({
        y: this._map.latLngToContainerPoint([latitude, 0]).y,
        text: angleLabel(latitude, step, 'N', 'S'),
      }));
  },

  _line(context, from, to) {
    context.strokeStyle = this._palette.graticule;
    context.lineWidth = 1;
    context.beginPath();
    context.moveTo(from[0] + 0.5, from[1] + 0.5);
    context.lineTo(to[0] + 0.5, to[1] + 0.5);
    context.stroke();
  },

  _label(context, text, x, y) {
    if (!this._palette.label) return;
    // On a ground of its own: a name of the base map may lie below.
    context.fillStyle = this._palette.ground;
    context.fillRect(x - 2, y - 11, context.measureText(text).width + 4, 14);
    context.fillStyle = this._palette.label;
    context.fillText(text, x, y);
  },
});
