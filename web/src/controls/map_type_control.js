/* global L */
import { MAP_TYPES } from '../base_map/map_types.js';

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
    bar.setAttribute('role', 'group');
    bar.setAttribute('aria-label', 'Map type');
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
