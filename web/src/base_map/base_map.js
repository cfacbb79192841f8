/* global L */
/** The drawn base map: land, lakes, rivers, borders, names. Each tile is drawn at once from what is in memory. */
import { ByteReader } from '../base/byte_stream.js';
import { clipRing, clipSegment, overlap } from '../base/clipping.js';
import { loadBytes } from '../base/loading.js';
import { decodeLayers, RegionFile } from './shape_file.js';
import { ShapeRegions } from './shape_regions.js';

const TILE_SIZE = 256;
/** How far beyond the tile shapes are drawn, pixels: more than half of the widest line. */
const MARGIN = 4;
const TILE_BOX = { left: -MARGIN, right: TILE_SIZE + MARGIN, top: -MARGIN, bottom: TILE_SIZE + MARGIN };
/** Below these zooms the lines would be a tangle. */
const FIRST_ZOOM = { rivers: 4, states: 4, counties: 8 };
/** Fresh canvas memory costs more time than drawing: this many canvases are kept for the next view,
 * 42 MB of them (four times that on a screen of twice the density). */
const SPARE_CANVASES = 160;

/** Loads the shapes of the whole world from the station. */
export async function loadBaseMap() {
  const bytes = new Uint8Array(await loadBytes('../data/world.shapes'));
  return new ShapeRegions(decodeLayers(new ByteReader(bytes)));
}

/** Loads the finer shapes, for the closer zooms. */
export async function loadDetail() {
  return new RegionFile(new Uint8Array(await loadBytes('../data/detail.shapes')));
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

/** One path of rings; where they are cut, the cut runs outside the tile. */
function pathOf(rings) {
  const path = new Path2D();
  for (const ring of rings) {
    const points = clipRing(ring, TILE_BOX);
    for (let at = 0; at < points.length; at += 2) {
      if (at === 0) path.moveTo(points[0], points[1]);
      else path.lineTo(points[at], points[at + 1]);
    }
    if (points.length > 0) path.closePath();
  }
  return path;
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

  /** @param {object} palette one of MAP_TYPES @param {import('./pictures.js').Pictures} pictures */
  initialize(palette, pictures) {
    L.GridLayer.prototype.initialize.call(this);
    this._palette = palette;
    this._pictures = pictures;
    this._regions = null;
    this._labels = null;
    this._shown = new Map();
    this._spare = [];
    this.on('tileunload', ({ tile }) => {
      this._shown.delete(tile);
      if (this._spare.length < SPARE_CANVASES) this._spare.push(tile);
    });
  },

  setPalette(palette) {
    this._palette = palette;
    this.repaint();
  },

  /** @param {ShapeRegions} regions what loadBaseMap() gave */
  setShapes(regions) {
    this._regions = regions;
    this.repaint();
  },

  /** @param {RegionFile} detail what loadDetail() gave */
  setDetail(detail) {
    this._regions.setDetail(detail);
    if (this._map?.getZoom() >= detail.zoom) this.repaint();
  },

  /** @param {import('../labels/label_painter.js').LabelPainter} labels */
  setLabels(labels) {
    this._labels = labels;
    this.repaint();
  },

  createTile(coords) {
    const density = Math.ceil(window.devicePixelRatio || 1);
    const canvas = this._canvas(TILE_SIZE * density);
    this._shown.set(canvas, { coords, density });
    this._paint(canvas, coords, density);
    return canvas;
  },

  /** Draws what is shown anew, each tile in its place: nothing vanishes meanwhile. */
  repaint() {
    for (const [canvas, { coords, density }] of this._shown) this._paint(canvas, coords, density);
  },

  _canvas(size) {
    const canvas = this._spare.pop() ?? L.DomUtil.create('canvas');
    if (canvas.width !== size) canvas.width = size;
    if (canvas.height !== size) canvas.height = size;
    return canvas;
  },

  _paint(canvas, coords, density) {
    const context = canvas.getContext('2d', { alpha: false });
    context.setTransform(density, 0, 0, density, 0, 0);
    context.fillStyle = this._fill('sea', coords) ?? this._palette.water;
    context.fillRect(0, 0, TILE_SIZE, TILE_SIZE);
    if (this._regions) this._paintShapes(context, coords);
    if (this._labels && this._palette.text) this._labels.paint(context, coords, this._palette);
  },

  /** The picture that this map type has for the land or the sea, where it is there. */
  _fill(part, coords) {
    const picture = this._palette.pictures?.[part];
    return picture ? this._pictures.pattern(picture, coords) : null;
  },

  _paintShapes(context, coords) {
    const { land, lake, river, coast, border, state, county } = this._palette;
    const view = new TileView(coords);
    const layers = this._regions.forTile(coords.z, coords.x, coords.y);
    const stroke = (layer, colour, width) => {
      if (layer.shapes.length === 0 || !colour) return;
      context.strokeStyle = colour;
      context.lineWidth = width;
      strokeLines(context, view.pixels(layer));
    };
    const fill = (layer, style) => {
      const rings = layer.shapes.length > 0 ? view.pixels(layer) : [];
      if (rings.length === 0) return;
      const path = pathOf(rings);
      context.fillStyle = style;
      context.fill(path, 'evenodd');
      if (!coast) return;
      context.strokeStyle = coast;
      context.lineWidth = 1;
      context.stroke(path);
    };
    context.lineJoin = 'round';
    fill(layers.land, this._fill('land', coords) ?? land);
    if (coords.z >= FIRST_ZOOM.rivers) stroke(layers.rivers, river, coords.z < 7 ? 1 : 1.6);
    fill(layers.lakes, lake);
    if (coords.z >= FIRST_ZOOM.counties) stroke(layers.counties, county, 1);
    if (coords.z >= FIRST_ZOOM.states) stroke(layers.states, state, coords.z < 7 ? 1 : 1.5);
    stroke(layers.borders, border, coords.z < 5 ? 0.8 : 1.6);
  },
});
