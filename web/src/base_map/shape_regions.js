/**
 * Finds the few points that matter for a tile among all the shapes of the world.
 *
 * Every third zoom has regions, which are that zoom's tiles. A region's shapes are cut out of those of the
 * region three zooms above it when it is first looked at, so a tile never goes through a whole continent's
 * outline. What is cut out keeps its full detail; tiles are drawn from copies thinned for each zoom.
 */
import { clipRing, cutLine, overlap, thin } from '../base/clipping.js';
import { shapeOf } from './world_shapes.js';

const ZOOMS_A_REGION = 3;
/** A region reaches beyond its edge by this part of its size: more than half of the widest line. */
const REACH = 1 / 32;
/** Points nearer to each other than this, and shapes smaller than this, are left out, pixels. */
const DETAIL = 0.7;
const TILE_SIZE = 256;
const KEPT_REGIONS = 240;

/** How a shape of a kind is cut by a box: rings stay closed, lines fall into runs. */
const CUT = {
  ring: (points, box) => [clipRing(points, box)],
  line: (points, box) => cutLine(points, box),
};

/** @typedef {{kind: "ring"|"line", shapes: import('./world_shapes.js').Shape[]}} Layer */

function cutLayer({ kind, shapes }, box) {
  const touching = shapes.filter((shape) => overlap(shape.box, box));
  const pieces = touching.flatMap((shape) => CUT[kind](shape.points, box));
  return { kind, shapes: pieces.filter((points) => points.length > 2).map(shapeOf) };
}

function thinLayer({ kind, shapes }, distance) {
  const visible = shapes.filter(
    ({ box }) => box.right - box.left >= distance || box.bottom - box.top >= distance,
  );
  return { kind, shapes: visible.map(({ points, box }) => ({ points: thin(points, distance), box })) };
}

function mapLayers(layers, change) {
  return Object.fromEntries(Object.entries(layers).map(([name, layer]) => [name, change(layer)]));
}

/** The shapes that cross the date line once more for each side of the world that they reach into. */
function withCopies({ kind, shapes }) {
  const copies = [-1, 1].flatMap((turn) => shapes.map((shape) => shifted(shape, turn)));
  return {
    kind,
    shapes: shapes.concat(copies.filter(({ box }) => box.right > -REACH && box.left < 1 + REACH)),
  };
}

function shifted({ points }, turn) {
  return shapeOf(points.map((value, at) => (at % 2 === 0 ? value + turn : value)));
}

export class ShapeRegions {
  /** @param {Object<string, Layer>} layers on the unit world */
  constructor(layers) {
    this.world = mapLayers(layers, withCopies);
    this.regions = new Map();
    this.detail = null;
    // The whole world takes longest; done now, no view has to wait for it.
    for (let zoom = 0; zoom < ZOOMS_A_REGION; zoom += 1) this.forTile(zoom, 0, 0);
  }

  /**
   * From now on the regions of one zoom, and those below them, are taken from finer shapes.
   * @param {{zoom: number, layers: function(number, number): Object<string, Layer>}} detail
   */
  setDetail(detail) {
    this.detail = detail;
    for (const key of this.regions.keys()) {
      if (parseInt(key, 10) >= detail.zoom) this.regions.delete(key);
    }
  }

  /** @returns {Object<string, Layer>} what to draw a tile from, and some more around it */
  forTile(zoom, column, row) {
    const rest = zoom % ZOOMS_A_REGION;
    const region = this.region(zoom - rest, column >> rest, row >> rest);
    const pixel = 1 / (TILE_SIZE * 2 ** zoom);
    region.thinned[rest] ??= mapLayers(region.full, (layer) => thinLayer(layer, DETAIL * pixel));
    return region.thinned[rest];
  }

  region(zoom, column, row) {
    const key = `${zoom}/${column}/${row}`;
    const region = this.regions.get(key) ?? this.cutRegion(zoom, column, row);
    // Put last again, so that the first ones are those not looked at for the longest time.
    this.regions.delete(key);
    this.regions.set(key, region);
    if (this.regions.size > KEPT_REGIONS) this.regions.delete(this.regions.keys().next().value);
    return region;
  }

  cutRegion(zoom, column, row) {
    if (zoom === this.detail?.zoom) return { full: this.detail.layers(column, row), thinned: [] };
    const size = 2 ** -zoom;
    const reach = size * REACH;
    const left = column * size;
    const top = row * size;
    const box = {
      left: left - reach,
      right: left + size + reach,
      top: top - reach,
      bottom: top + size + reach,
    };
    const full = mapLayers(this.layersAbove(zoom, column, row), (layer) => cutLayer(layer, box));
    return { full, thinned: [] };
  }

  layersAbove(zoom, column, row) {
    if (zoom === 0) return this.world;
    return this.region(zoom - ZOOMS_A_REGION, column >> ZOOMS_A_REGION, row >> ZOOMS_A_REGION).full;
  }
}
