/* global L */
/** The map itself: its size, its panes, and the moves that the client asks for. */
import { clampLatitude, wrapLongitude } from './base/earth.js';

/** The client's world has one unit a pixel at this zoom: there is nothing beyond it. */
export const MAX_ZOOM = 22;
/** Below this the whole world would be a stamp; the client may still ask for it. */
const MIN_ZOOM = 2;
/** What is shown until the client asks for a place: the United States. */
const FIRST_VIEW = { zoom: 4, latitude: 39.5, longitude: -97 };

/** Our panes from bottom to top, by z-index. The library has its own: handles of outlines 600, controls 800. */
const PANES = {
  base: 210,
  online: 215,
  graticule: 220,
  zones: 230,
  outlines: 400,
  strips: 440,
  tracks: 450,
  zoneNames: 455,
  drawing: 460,
};

/** Sets the size of the map's element, pixels. */
function setElementSize(element, width, height) {
  element.style.width = width + 'px';
  element.style.height = height + 'px';
}

export class MapView {
  /** @param {HTMLElement} element @param {number} width pixels @param {number} height pixels */
  constructor(element, width, height) {
    this.element = element;
    this.width = width;
    this.height = height;
    /** The centre that the client asked for last. */
    this.asked = null;
    setElementSize(element, width, height);
    this.map = L.map(element, {
      minZoom: MIN_ZOOM,
      maxZoom: MAX_ZOOM,
      attributionControl: false,
      zoomControl: false,
      zoomAnimation: false,
      fadeAnimation: false,
      worldCopyJump: true,
      keyboard: false,
      boxZoom: false,
    });
  }

  createPanes() {
    for (const [name, level] of Object.entries(PANES)) {
      const pane = this.map.createPane(name);
      // Pictures without words would only be in the way of who has the page read out.
      if (name !== 'zoneNames') pane.setAttribute('aria-hidden', 'true');
      pane.style.zIndex = level;
      pane.style.pointerEvents = 'none';
    }
    this.map.getPane('markerPane').setAttribute('aria-hidden', 'true');
  }

  /** Shows the first view, once the layers are there. */
  showFirstView() {
    this.fit(FIRST_VIEW);
  }

  /** @param {{zoom: number, latitude: number, longitude: number}} view degrees; zoom is cut to MAX_ZOOM */
  fit({ zoom, latitude, longitude }) {
    const shown = Math.min(zoom, MAX_ZOOM);
    const least = Math.min(shown, MIN_ZOOM);
    if (least < this.map.getMinZoom()) this.map.setMinZoom(least);
    this.show(latitude, longitude, shown);
    this.map.setMinZoom(least);
  }

  /** Moves the centre to a place, degrees, and keeps the zoom. */
  pan({ latitude, longitude }) {
    this.show(latitude, longitude, this.map.getZoom());
  }

  show(latitude, longitude, zoom) {
    this.asked = L.latLng(clampLatitude(latitude), wrapLongitude(longitude));
    this.map.setView(this.asked, zoom, { animate: false });
  }

  /**
   * The centre of the view. The map moves by whole pixels; within one, the centre is what the client asked
   * for, so that asking and reporting again and again does not make the map creep.
   * @returns {L.LatLng}
   */
  centre() {
    const middle = this.map.getCenter();
    if (!this.asked) return middle;
    const { x, y } = this.map.project(this.asked).subtract(this.map.project(middle));
    return Math.abs(x) <= 1 && Math.abs(y) <= 1 ? this.asked : middle;
  }

  /** Gives the map another size, pixels; the place in its middle stays there. */
  resize(width, height) {
    const { lat, lng } = this.centre();
    this.width = width;
    this.height = height;
    setElementSize(this.element, width, height);
    this.map.invalidateSize({ pan: false });
    this.show(lat, lng, this.map.getZoom());
  }
}
