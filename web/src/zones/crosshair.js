/* global L */
/** Two crossed lines over the map that the keyboard moves; at the map's edge the map moves under them. */

/** This near to an edge of the view the map moves, pixels. */
const EDGE = 24;

export class Crosshair {
  /** @param {L.Map} map */
  constructor(map) {
    this.map = map;
    this.element = L.DomUtil.create('div', 'crosshair', map.getContainer());
    this.element.setAttribute('aria-hidden', 'true');
    this.hide();
  }

  get isShown() {
    return !this.element.hidden;
  }

  /** The place under it. */
  get latlng() {
    return this.map.containerPointToLatLng(this.point);
  }

  hide() {
    this.element.hidden = true;
  }

  remove() {
    this.element.remove();
  }

  /** @param {number} dx @param {number} dy pixels to the right and down */
  moveBy(dx, dy) {
    if (!this.isShown) return this.moveTo(this.map.getSize().divideBy(2));
    this.moveTo(this.point.add([dx, dy]));
  }

  /** @param {L.LatLng} latlng */
  moveToPlace(latlng) {
    this.moveTo(this.map.latLngToContainerPoint(latlng));
  }

  moveTo(wanted) {
    const size = this.map.getSize();
    const inside = L.point(
      Math.max(EDGE, Math.min(size.x - EDGE, wanted.x)),
      Math.max(EDGE, Math.min(size.y - EDGE, wanted.y)),
    );
    const beyond = wanted.subtract(inside);
    if (beyond.x !== 0 || beyond.y !== 0) this.map.panBy(beyond, { animate: false });
    this.point = inside;
    this.element.hidden = false;
    this.element.style.transform = `translate(${inside.x}px, ${inside.y}px)`;
  }
}
