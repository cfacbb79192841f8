/* global L */
/**
 * The four map types. This map has drawn data only, no pictures from above: each type is a palette of its
 * own, all of them quiet enough for the black, white, red, blue, green and magenta of the tracks; the dark
 * ones are no darker than blue allows.
 */

export const MAP_TYPES = {
  Map: {
    water: '#d5e3ec',
    land: '#f3f0e8',
    coast: '#9fb6c4',
    border: '#a99f95',
    state: '#cdc5ba',
    graticule: 'rgba(70, 95, 120, 0.22)',
    label: '#5d7183',
    halo: 'rgba(255, 255, 255, 0.8)',
    dark: false,
  },
  Satellite: {
    water: '#485763',
    land: '#616c65',
    coast: '#7d8c8c',
    border: '#8d9791',
    state: '#737e78',
    graticule: 'rgba(190, 210, 220, 0.12)',
    label: null,
    halo: null,
    dark: true,
  },
  Hybrid: {
    water: '#485763',
    land: '#616c65',
    coast: '#94a3a5',
    border: '#b3bbb5',
    state: '#838e88',
    graticule: 'rgba(200, 220, 230, 0.28)',
    label: '#dfe7ec',
    halo: 'rgba(40, 50, 56, 0.8)',
    dark: true,
  },
  Terrain: {
    water: '#cfdcd8',
    land: '#eaddc4',
    coast: '#a89a7c',
    border: '#a0835f',
    state: '#cdb893',
    graticule: 'rgba(110, 85, 50, 0.22)',
    label: '#7d6a4b',
    halo: 'rgba(255, 250, 240, 0.8)',
    dark: false,
  },
};

/** A row of buttons, one a map type, of which one is pressed. */
export const MapTypeControl = L.Control.extend({
  options: { position: 'topright' },

  /** @param {function(string): void} choose gets the name of the type that the user wants */
  initialize(choose) {
    this._choose = choose;
    this._buttons = new Map();
  },

  onAdd() {
    const bar = L.DomUtil.create('div', 'map-types leaflet-bar');
    for (const name of Object.keys(MAP_TYPES)) this._buttons.set(name, this._addButton(bar, name));
    L.DomEvent.disableClickPropagation(bar);
    return bar;
  },

  _addButton(bar, name) {
    const button = L.DomUtil.create('button', '', bar);
    button.type = 'button';
    button.textContent = name;
    button.addEventListener('click', () => this._choose(name));
    return button;
  },

  mark(chosen) {
    for (const [name, button] of this._buttons) button.setAttribute('aria-pressed', String(name === chosen));
  },
});
