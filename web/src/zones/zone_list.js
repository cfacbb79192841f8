/** The zones in the order in which the client sent them, with their names. */
import { boxOf } from '../base/clipping.js';
import { worldX, worldY } from '../base/earth.js';

/**
 * @typedef {object} Zone
 * @property {boolean} alert
 * @property {number[][]} vertices [latitude, longitude], degrees
 * @property {boolean} isReadable false where the client's text could not be read: the zone then only keeps its
 *     place in the count
 * @property {Float64Array} outline x and y of the vertices on the unit world
 * @property {import('../base/clipping.js').Box} box around the outline
 * @property {string} section the dotted number, empty until the client has sent it
 * @property {string} description
 * @property {Zone[]} children
 */

export class ZoneList {
  constructor() {
    this.clear();
  }

  clear() {
    /** @type {Zone[]} */
    this.zones = [];
    this.namedCount = 0;
    this.bySection = new Map();
  }

  /** @param {{alert: boolean, vertices: number[][]}|null} parsed null for a zone that could not be read */
  add(parsed) {
    const { alert, vertices } = parsed ?? { alert: false, vertices: [] };
    const outline = Float64Array.from(
      vertices.flatMap(([latitude, longitude]) => [worldX(longitude), worldY(latitude)]),
    );
    const zone = { alert, vertices, isReadable: parsed !== null, outline, box: boxOf(outline) };
    this.zones.push(Object.assign(zone, { section: '', description: '', children: [] }));
    return zone;
  }

  /** @param {({section: string, description: string}|null)[]} names of the next zones that have none yet */
  addNames(names) {
    for (const name of names) {
      const zone = this.zones[this.namedCount];
      this.namedCount += 1;
      if (!zone || !name) continue;
      Object.assign(zone, name);
      this.bySection.set(name.section, zone);
      const parent = name.section.slice(0, Math.max(0, name.section.lastIndexOf('.')));
      this.bySection.get(parent)?.children.push(zone);
    }
  }

  /** Those that have an area and lie in no other, as far as numbers are known. */
  outermost() {
    return this.zones.filter(({ section, vertices }) => vertices.length > 2 && !section.includes('.'));
  }

  /** The corners of all zones but one. */
  cornersBut(ordinal) {
    return this.zones.flatMap(({ vertices }, index) => (index === ordinal ? [] : vertices));
  }
}
