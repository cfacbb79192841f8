/* global L */
/** Quiet sentences over the map, which the user can close, and one panel that covers it. */

const NO_STREET_PICTURES = 'This station has no pictures of streets.';
const WAY_BACK = '“Exit to Map”, where the menu was, leads back.';

function element(tag, className, parent) {
  const made = document.createElement(tag);
  made.className = className;
  parent.appendChild(made);
  return made;
}

/** The map under the element does not feel the mouse over it; the right click still opens the client's menu. */
function apart(made) {
  L.DomEvent.disableClickPropagation(made);
  L.DomEvent.disableScrollPropagation(made);
  L.DomEvent.on(made, 'mousemove', L.DomEvent.stopPropagation);
  return made;
}

export class Notices {
  /** @param {HTMLElement} container the map's element */
  constructor(container) {
    this.container = container;
    this.list = apart(element('div', 'notices', container));
    this.list.setAttribute('role', 'status');
    this.list.setAttribute('aria-label', 'Notices');
    this.shown = new Map();
    this.panel = null;
  }

  /** @param {string} key the notice's name: one notice a name @param {string} text what it says */
  show(key, text) {
    this.hide(key);
    const notice = element('div', 'notice', this.list);
    element('span', '', notice).textContent = text;
    const close = element('button', '', notice);
    close.type = 'button';
    close.textContent = '×';
    close.title = 'Close';
    close.setAttribute('aria-label', 'Close this notice');
    close.addEventListener('click', () => this.hide(key));
    this.shown.set(key, notice);
  }

  hide(key) {
    this.shown.get(key)?.remove();
    this.shown.delete(key);
  }

  /** The overlay of streets with pictures is wanted or not. */
  setStreetOverlay(wanted) {
    if (wanted) this.show('streets', NO_STREET_PICTURES);
    else this.hide('streets');
  }

  /** The panorama takes the place of the map while it is wanted. */
  setPanorama(wanted) {
    this.panel?.remove();
    this.panel = null;
    if (!wanted) return;
    this.panel = apart(element('div', 'panel', this.container));
    this.panel.setAttribute('role', 'status');
    this.panel.setAttribute('aria-label', 'Panorama');
    for (const text of [NO_STREET_PICTURES, WAY_BACK]) element('p', '', this.panel).textContent = text;
  }
}
