/* global L */
/** The zones on the map: outlines, names, and the layer of the client's zone tiles. */
import { ZoneList } from './zone_list.js';
import { ZoneNames } from './zone_names.js';
import { zoneStyle } from './zone_styles.js';
import { ZoneTint } from './zone_tint.js';
import { ZoneMark, ZoneTiles } from './zone_tiles.js';

export class ZoneLayer {
  /** @param {L.Map} map @param {import('../tiles/tile_questions.js').TileQuestions} questions asked with kind "Z" */
  constructor(map, questions) {
    this.map = map;
    this.mark = new ZoneMark();
    this.tiles = new ZoneTiles(questions, (fileName) => this.showKind(fileName));
    // One canvas carries thousands of outlines more lightly than as many elements.
    this.renderer = L.canvas({ pane: 'outlines', padding: 0.3 });
    this.outlines = L.layerGroup();
    this.list = new ZoneList();
    this.names = new ZoneNames(this.list);
    this.tint = new ZoneTint(this.list);
    this.polygons = [];
    this.hiddenOrdinal = null;
    this.isDark = false;
  }

  /** The map under the zones is dark or light. */
  setDark(isDark) {
    if (isDark === this.isDark) return;
    this.isDark = isDark;
    this.polygons.forEach((polygon, at) => polygon.setStyle(zoneStyle(this.list.zones[at], isDark)));
  }

  setVisible(visible) {
    for (const part of [this.tint, this.outlines, this.names, this.tiles, this.mark]) {
      if (visible) part.addTo(this.map);
      else part.remove();
    }
  }

  /** The client is about to send its list anew; which kind of zone is on top may have changed. */
  clear() {
    this.list.clear();
    this.polygons = [];
    this.outlines.clearLayers();
    this.listChanged();
    this.tiles.renew();
  }

  /** The client's placeholder says which kind of zone is on top. */
  showKind(fileName) {
    this.mark.show(fileName);
    this.tint.setKind(/^red\./i.test(fileName));
  }

  listChanged() {
    this.names.updateSoon();
    this.tint.updateSoon();
  }

  /** @param {{alert: boolean, vertices: number[][]}|null} parsed null for a zone that could not be read */
  add(parsed) {
    const zone = this.list.add(parsed);
    const polygon = L.polygon(zone.vertices, { ...zoneStyle(zone, this.isDark), renderer: this.renderer });
    this.polygons.push(polygon);
    if (this.polygons.length - 1 !== this.hiddenOrdinal) this.outlines.addLayer(polygon);
    this.tint.updateSoon();
  }

  /** @param {({section: string, description: string}|null)[]} names of the next zones of the list */
  addNames(names) {
    this.list.addNames(names);
    this.listChanged();
  }

  /** While a zone is edited, the shape under the user's hands stands for it. @param {number|null} ordinal */
  hideOriginal(ordinal) {
    const before = this.polygons[this.hiddenOrdinal];
    if (before) this.outlines.addLayer(before);
    this.hiddenOrdinal = ordinal;
    if (this.polygons[ordinal]) this.outlines.removeLayer(this.polygons[ordinal]);
    this.names.setHidden(this.list.zones[ordinal] ?? null);
  }
}
