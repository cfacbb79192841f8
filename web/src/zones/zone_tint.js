/* global L */
/** The world outside the zones, in a breath of the colour that the client's placeholder tiles have. */

const COLOURS = { red: '#c03030', green: '#308030' };
const OPACITY = 0.04;
/** Around the world as often as a view can show it. */
const EVERYWHERE = [
  [90, -900],
  [90, 900],
  [-90, 900],
  [-90, -900],
];

export class ZoneTint {
  /** @param {import('./zone_list.js').ZoneList} list */
  constructor(list) {
    this.list = list;
    this.shape = L.polygon([], {
      renderer: L.canvas({ pane: 'zones', padding: 0.3 }),
      stroke: false,
      fillOpacity: OPACITY,
      interactive: false,
    });
    this.waiting = false;
    this.isKnown = false;
  }

  addTo(map) {
    this.shape.addTo(map);
  }

  remove() {
    this.shape.remove();
  }

  /** @param {boolean} isRed which of the two placeholders the client named */
  setKind(isRed) {
    this.isKnown = true;
    this.shape.setStyle({ fillColor: isRed ? COLOURS.red : COLOURS.green });
    this.updateSoon();
  }

  /** Once for all that comes within one frame. */
  updateSoon() {
    if (this.waiting) return;
    this.waiting = true;
    requestAnimationFrame(() => {
      this.waiting = false;
      this.shape.setLatLngs(this.rings());
    });
  }

  /** A map without zones has no outside. */
  rings() {
    if (!this.isKnown) return [];
    const outermost = this.list.outermost().map(({ vertices }) => vertices);
    return outermost.length > 0 ? [EVERYWHERE, ...outermost] : [];
  }
}
