/**
 * Decides which names are shown at a zoom, and on which side of their places.
 *
 * A name gives way to every more important one that is shown and in its way. That rule knows nothing of the
 * view, so a name neither comes nor goes nor moves while the map is panned, and each tile can be drawn by
 * itself.
 */
import { overlap } from '../base/clipping.js';
import { LABEL_STYLES, shownText } from './label_styles.js';
import { NameGrid } from './name_grid.js';

const TILE_SIZE = 256;
/** Between two names, and between a place's mark and its name, pixels. */
const GAP = 4;
/** Around a place's mark, pixels. */
export const DOT_RIM = 1;
/** No name reaches farther from its place, pixels: the longest ones take 335, and their mark and gap. */
export const LONGEST_REACH = 350;
const HIGHEST_REACH = 24;
/** From this zoom on the same names are there at every zoom. */
const LAST_CHANGE = 13;

const UNKNOWN = -2;
const HIDDEN = -1;

/** Where a name may stand: the upper left corner from the place, by its width, height and distance. */
const BESIDE = [
  (width, height, away) => [away, -height / 2],
  (width, height, away) => [-away - width, -height / 2],
  (width, height, away) => [-width / 2, -away - height],
  (width, height, away) => [-width / 2, away],
];
const AMID = [(width, height) => [-width / 2, -height / 2]];

export class LabelPlacement {
  /**
   * @param {import('./name_file.js').NameFile} names
   * @param {function(string, import('./label_styles.js').LabelStyle): number} measure width of a text, pixels
   */
  constructor(names, measure) {
    this.names = names;
    this.measure = measure;
    this.widths = new Float32Array(names.count).fill(NaN);
    this.grids = new Map();
    this.decisions = new Map();
  }

  /** @returns {import('./label_styles.js').LabelStyle} */
  style(index) {
    return LABEL_STYLES[this.names.kindOf(index)];
  }

  width(index) {
    if (Number.isNaN(this.widths[index])) {
      const style = this.style(index);
      this.widths[index] = this.measure(shownText(this.names.name(index), style), style);
    }
    return this.widths[index];
  }

  /**
   * The names to draw on a tile: all that reach into it.
   * @param {{z: number, x: number, y: number}} tile
   * @returns {{index: number, x: number, y: number, left: number, top: number}[]} in pixels of the tile: the
   *     place, and the upper left corner of the text
   */
  forTile({ z, x, y }) {
    const scale = TILE_SIZE * 2 ** z;
    const [left, top] = [x * TILE_SIZE, y * TILE_SIZE];
    const tile = { left: 0, top: 0, right: TILE_SIZE, bottom: TILE_SIZE };
    const around = {
      left: left - LONGEST_REACH,
      right: left + TILE_SIZE + LONGEST_REACH,
      top: top - HIGHEST_REACH,
      bottom: top + TILE_SIZE + HIGHEST_REACH,
    };
    const shown = [];
    this.visit(z, around, (index, turn) => {
      const position = this.position(z, index);
      if (position === HIDDEN) return;
      const place = {
        x: (this.names.worldX(index) + turn) * scale - left,
        y: this.names.worldY(index) * scale - top,
      };
      const box = this.box(index, position, place);
      if (!overlap(box, tile) && !overlap(this.dotBox(index, place), tile)) return;
      shown.push({ index, ...place, left: box.left + GAP / 2, top: box.top + GAP / 2 });
    });
    return shown;
  }

  /** @returns {number} which of its sides a name stands on, or −1 where it is not shown */
  position(zoom, index) {
    const decisions = this.decisionsAt(zoom);
    if (decisions[index] === UNKNOWN) decisions[index] = this.decide(zoom, index);
    return decisions[index];
  }

  decide(zoom, index) {
    const scale = TILE_SIZE * 2 ** zoom;
    const place = { x: this.names.worldX(index) * scale, y: this.names.worldY(index) * scale };
    // Places whose names could reach this name on any of its sides.
    const aside = this.width(index) + LONGEST_REACH;
    const around = {
      left: place.x - aside,
      right: place.x + aside,
      top: place.y - 2 * HIGHEST_REACH,
      bottom: place.y + 2 * HIGHEST_REACH,
    };
    const inTheWay = [];
    this.visit(zoom, around, (other, turn) => {
      if (other >= index || turn !== 0 || this.position(zoom, other) === HIDDEN) return;
      const otherPlace = { x: this.names.worldX(other) * scale, y: this.names.worldY(other) * scale };
      inTheWay.push(this.box(other, this.position(zoom, other), otherPlace), this.dotBox(other, otherPlace));
    });
    if (inTheWay.some((box) => overlap(box, this.dotBox(index, place)))) return HIDDEN;
    return this.sides(index).findIndex((_, side) => {
      const box = this.box(index, side, place);
      return !inTheWay.some((other) => overlap(other, box));
    });
  }

  sides(index) {
    return this.style(index).dot > 0 ? BESIDE : AMID;
  }

  /** A name's text with half of the gap around it. */
  box(index, side, { x, y }) {
    const { height, dot } = this.style(index);
    const width = this.width(index);
    const [right, down] = this.sides(index)[side](width, height, dot + GAP);
    return {
      left: x + right - GAP / 2,
      top: y + down - GAP / 2,
      right: x + right + width + GAP / 2,
      bottom: y + down + height + GAP / 2,
    };
  }

  dotBox(index, { x, y }) {
    const { dot } = this.style(index);
    const radius = dot + DOT_RIM;
    return { left: x - radius, right: x + radius, top: y - radius, bottom: y + radius };
  }

  decisionsAt(zoom) {
    if (!this.decisions.has(zoom)) {
      this.decisions.set(zoom, new Int8Array(this.names.count).fill(UNKNOWN));
    }
    return this.decisions.get(zoom);
  }

  /** The names that may be shown at a zoom. */
  grid(zoom) {
    const key = Math.min(zoom, LAST_CHANGE);
    if (!this.grids.has(key)) {
      const { minZoom, maxZoom } = this.names;
      const isWanted = (index) => minZoom[index] <= key && key <= maxZoom[index];
      this.grids.set(key, new NameGrid(this.names, key, isWanted));
    }
    return this.grids.get(key);
  }

  /** Visits the names that may be shown at a zoom around a box in pixels of that zoom. */
  visit(zoom, box, visit) {
    const scale = TILE_SIZE * 2 ** zoom;
    this.grid(zoom).visit(
      {
        left: box.left / scale,
        right: box.right / scale,
        top: box.top / scale,
        bottom: box.bottom / scale,
      },
      visit,
    );
  }
}

/** What takes time at the first look at a zoom, as steps that are better done before it. */
export function preparations(placement) {
  return Array.from({ length: LAST_CHANGE + 1 }, (_, zoom) => () => placement.grid(zoom));
}
