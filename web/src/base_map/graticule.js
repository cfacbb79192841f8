/* global L */
/** The net of meridians and parallels over the base map, and the strips along two edges that name them. */
import { angleLabel, multiples, stepFor } from './graticule_lines.js';

/** Breadth of the strips, pixels; page.css leaves as much room beside the controls. */
const STRIP = 15;
const TICK = 3;
/** Between a label and the end of its strip, pixels. */
const GAP = 2;
const FONT = '10.5px "DejaVu Sans", Verdana, sans-serif';

export const Graticule = L.Layer.extend({
  options: { pane: 'graticule', stripPane: 'strips' },

  initialize(palette) {
    this._palette = palette;
  },

  onAdd() {
    this._net = L.DomUtil.create('canvas', '', this.getPane());
    const strips = this.getPane(this.options.stripPane);
    this._bottom = L.DomUtil.create('canvas', '', strips);
    this._left = L.DomUtil.create('canvas', '', strips);
    this._draw();
  },

  onRemove() {
    [this._net, this._bottom, this._left].forEach((canvas) => canvas.remove());
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
    const meridians = this._meridians(size);
    const parallels = this._parallels(size);
    const context = this._prepare(this._net, [0, 0], size.x, size.y);
    for (const { x } of meridians) this._line(context, [x, 0], [x, size.y]);
    for (const { y } of parallels) this._line(context, [0, y], [size.x, y]);
    this._drawBottom(size, meridians);
    this._drawLeft(size, parallels);
  },

  _drawBottom({ x: width, y: height }, meridians) {
    const context = this._prepare(this._bottom, [0, height - STRIP], width, STRIP);
    const marks = meridians.map(({ x, text }) => ({ at: x, text }));
    this._strip(context, { from: STRIP, to: width, mapSide: 0 }, marks);
  },

  /** Written upwards, from the upper edge of the strip at the bottom. */
  _drawLeft({ y: height }, parallels) {
    const length = Math.max(0, height - STRIP);
    const context = this._prepare(this._left, [0, 0], STRIP, length);
    context.translate(0, length);
    context.rotate(-Math.PI / 2);
    const marks = parallels.map(({ y, text }) => ({ at: length - y - 1, text }));
    this._strip(context, { from: 0, to: length, mapSide: STRIP - TICK }, marks);
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

  /** A canvas lies in a pane that pans; it is put back over its part of the view, to be drawn anew. */
  _prepare(canvas, [left, top], width, height) {
    const density = Math.ceil(window.devicePixelRatio || 1);
    canvas.width = width * density;
    canvas.height = height * density;
    canvas.style.width = width + 'px';
    canvas.style.height = height + 'px';
    L.DomUtil.setPosition(canvas, this._map.containerPointToLayerPoint([left, top]));
    const context = canvas.getContext('2d');
    context.scale(density, density);
    return context;
  },

  _line(context, from, to) {
    context.strokeStyle = this._palette.graticule;
    context.lineWidth = 1;
    context.beginPath();
    context.moveTo(from[0] + 0.5, from[1] + 0.5);
    context.lineTo(to[0] + 0.5, to[1] + 0.5);
    context.stroke();
  },

  /** Ticks along a strip, and those labels that fit into it. */
  _strip(context, { from, to, mapSide }, marks) {
    if (!this._palette.label) return;
    context.fillStyle = this._palette.ground;
    context.fillRect(0, 0, to, STRIP);
    context.fillStyle = this._palette.label;
    context.font = FONT;
    context.textAlign = 'center';
    context.textBaseline = 'middle';
    for (const { at, text } of marks) {
      if (at >= from) context.fillRect(at, mapSide, 1, TICK);
      const half = context.measureText(text).width / 2 + GAP;
      if (at - half >= from && at + half <= to) context.fillText(text, at, STRIP / 2 + 0.5);
    }
  },
});
