/* global L */
/** A line beside the scale bar that says where the middle of a close view is. */

/** From this zoom on a view may be without any name. */
const FIRST_ZOOM = 11;
/** From this zoom on a picture shows no more than its colours. */
const FIRST_BLURRED_ZOOM = 8;

export const Orientation = L.Control.extend({
  options: { position: 'bottomleft' },

  onAdd(map) {
    this._box = L.DomUtil.create('div', 'orientation');
    this._box.setAttribute('role', 'note');
    this._box.setAttribute('aria-label', 'What the map shows');
    map.on('moveend', this._updateSoon, this);
    this._update();
    return this._box;
  },

  onRemove(map) {
    map.off('moveend', this._updateSoon, this);
  },

  /** @param {function(number, number): string} describe says where a position is, degrees */
  setPlaces(describe) {
    this._describe = describe;
    this._update();
  },

  /** @param {string|null} picture what is to be known of the picture of this map type */
  setPicture(picture) {
    this._picture = picture;
    this._update();
  },

  /** After the view is drawn: far from any place the nearest one takes a while to find. */
  _updateSoon() {
    if (this._waiting) return;
    this._waiting = true;
    requestIdleCallback(() => this._update(), { timeout: 500 });
  },

  _update() {
    this._waiting = false;
    if (!this._map) return;
    const zoom = this._map.getZoom();
    const { lat, lng } = this._map.getCenter().wrap();
    const place = this._describe && zoom >= FIRST_ZOOM ? `Centre: ${this._describe(lat, lng)}` : null;
    const picture = this._picture && zoom >= FIRST_BLURRED_ZOOM ? this._picture : null;
    const lines = [picture, place].filter((line) => line);
    this._box.replaceChildren(
      ...lines.map((line) => Object.assign(document.createElement('div'), { textContent: line })),
    );
    this._box.hidden = lines.length === 0;
  },
});
