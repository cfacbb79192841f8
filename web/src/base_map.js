/* global L, topojson */
/** The drawn base map: land, coasts, borders, states. Each tile is drawn at once from shapes in memory. */
import { clipRing, clipSegment, overlap } from './clipping.js';
import { ShapeRegions } from './shape_regions.js';
import { linesOf, ringsOf } from './world_shapes.js';

const TILE_SIZE = 256;
/** How far beyond the tile shapes are drawn, pixels: more than half of the widest line. */
const MARGIN = 4;
const TILE_BOX = { left: -MARGIN, right: TILE_SIZE + MARGIN, top: -MARGIN, bottom: TILE_SIZE + MARGIN };
/** Below this zoom the states would be a tangle. */
const FIRST_STATES_ZOOM = 4;
const LOAD_TIMEOUT_MS = 10000;
/** Fresh canvas memory costs more time than drawing: this many canvases are kept for the next view. */
const SPARE_CANVASES = 96;

async function loadJson(url) {
  const stop = new AbortController();
  const timer = setTimeout(() => stop.abort(), LOAD_TIMEOUT_MS);
  try {
    const answer = await fetch(url, { signal: stop.signal });
    if (!answer.ok) throw new Error(`${url}: ${answer.status}`);
    return await answer.json();
  } finally {
    clearTimeout(timer);
  }
}

/** Loads the shapes from the station. */
export async function loadBaseMap() {
  const [world, states] = await Promise.all([
    loadJson('../data/countries-50m.json'),
    loadJson('../data/states-10m.json'),
  ]);
  const land = topojson.feature(world, world.objects.land);
  const between = (a, b) => a !== b;
  const lines = (topology, object, filter) => ({
    kind: 'line',
    shapes: linesOf(topojson.mesh(topology, object, filter)),
  });
  return new ShapeRegions({
    land: { kind: 'ring', shapes: land.features.flatMap((each) => ringsOf(each.geometry)) },
    coasts: lines(world, world.objects.land),
    borders: lines(world, world.objects.countries, between),
    states: lines(states, states.objects.states, between),
  });
}

/** Where a tile lies, and how to get from the unit world to its pixels. */
class TileView {
  constructor({ x, y, z }) {
    this.scale = TILE_SIZE * 2 ** z;
    this.left = x * TILE_SIZE;
    this.top = y * TILE_SIZE;
  }

  /** The points of those shapes that may touch the tile, in its pixels. */
  pixels({ shapes }) {
    const { left, right, top, bottom } = TILE_BOX;
    const box = {
      left: (this.left + left) / this.scale,
      right: (this.left + right) / this.scale,
      top: (this.top + top) / this.scale,
      bottom: (this.top + bottom) / this.scale,
    };
    return shapes.filter((shape) => overlap(shape.box, box)).map((shape) => this.toPixels(shape.points));
  }

  toPixels(points) {
    const out = new Array(points.length);
    for (let at = 0; at < points.length; at += 2) {
      out[at] = points[at] * this.scale - this.left;
      out[at + 1] = points[at + 1] * this.scale - this.top;
    }
    return out;
  }
}

function fillRings(context, rings) {
  context.beginPath();
  for (const ring of rings) {
    const points = clipRing(ring, TILE_BOX);
    for (let at = 0; at < points.length; at += 2) {
      if (at === 0) context.moveTo(points[0], points[1]);
      else context.lineTo(points[at], points[at + 1]);
    }
    if (points.length > 0) context.closePath();
  }
  context.fill('evenodd');
}

function strokeLines(context, lines) {
  context.beginPath();
  for (const line of lines) traceLine(context, line);
  context.stroke();
}

function traceLine(context, points) {
  let joined = false;
  for (let at = 2; at < points.length; at += 2) {
    const x1 = points[at];
    const y1 = points[at + 1];
    const part = clipSegment(points[at - 2], points[at - 1], x1, y1, TILE_BOX);
    if (part) {
      if (!joined) context.moveTo(part[0], part[1]);
      context.lineTo(part[2], part[3]);
    }
    joined = part !== null && part[2] === x1 && part[3] === y1;
  }
}

export const BaseMap = L.GridLayer.extend({
  options: { pane: 'base', className: 'base-map' },

  /** @param {object} palette colours of water, land, coast, border and state */
  initialize(palette) {
    L.GridLayer.prototype.initialize.call(this);
    this._palette = palette;
    this._regions = null;
    this._spare = [];
    this.on('tileunload', ({ tile }) => this._spare.length < SPARE_CANVASES && this._spare.push(tile));
  },

  setPalette(palette) {
    this._palette = palette;
    if (this._map) this.redraw();
  },

  /** @param {ShapeRegions} regions what loadBaseMap() gave */
  setShapes(regions) {
    this._regions = regions;
    if (this._map) this.redraw();
  },

  createTile(coords) {
    const density = Math.ceil(window.devicePixelRatio || 1);
    const canvas = this._canvas(TILE_SIZE * density);
    const context = canvas.getContext('2d', { alpha: false });
    context.setTransform(density, 0, 0, density, 0, 0);
    context.fillStyle = this._palette.water;
    context.fillRect(0, 0, TILE_SIZE, TILE_SIZE);
    if (this._regions) this._draw(context, coords);
    return canvas;
  },

  _canvas(size) {
    const canvas = this._spare.pop() ?? L.DomUtil.create('canvas');
    if (canvas.width !== size) canvas.width = size;
    if (canvas.height !== size) canvas.height = size;
    return canvas;
  },

  _draw(context, coords) {
    const { land, coast, border, state } = this._palette;
    const view = new TileView(coords);
    const layers = this._regions.forTile(coords.z, coords.x, coords.y);
    const stroke = (layer, colour, width) => {
      context.strokeStyle = colour;
      context.lineWidth = width;
      strokeLines(context, view.pixels(layer));
    };
    context.lineJoin = 'round';
    context.fillStyle = land;
    fillRings(context, view.pixels(layers.land));
    if (coords.z >= FIRST_STATES_ZOOM) stroke(layers.states, state, 1);
    stroke(layers.borders, border, coords.z < 5 ? 0.8 : 1.5);
    stroke(layers.coasts, coast, 1);
  },
});
