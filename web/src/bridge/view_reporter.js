/** Tells the client where the map is: the centre after every move, then the zoom if it is another. */
import { clampLatitude, wrapLongitude } from '../base/earth.js';
import { centreCommand, zoomCommand } from './commands.js';

export class ViewReporter {
  /** @param {import('../map_view.js').MapView} view @param {function(string): void} send */
  constructor(view, send) {
    this.view = view;
    this.map = view.map;
    this.send = send;
    this.lastZoom = null;
    this.scheduled = false;
  }

  /** Reports the view that is there, and from now on every other. */
  start() {
    this.report();
    this.map.on('moveend', () => this.reportSoon());
  }

  /** A resize moves the map twice within one script: one report is enough. */
  reportSoon() {
    if (this.scheduled) return;
    this.scheduled = true;
    queueMicrotask(() => {
      this.scheduled = false;
      if (!this.pullBack()) this.report();
    });
  }

  /** A throw may carry the view beyond the pole or around the world: the map goes on from the same place. */
  pullBack() {
    const { lat, lng } = this.view.centre();
    if (clampLatitude(lat) === lat && wrapLongitude(lng) === lng) return false;
    this.view.pan({ latitude: lat, longitude: lng });
    return true;
  }

  report() {
    const { lat, lng } = this.view.centre();
    this.send(centreCommand(lat, lng));
    const zoom = this.map.getZoom();
    if (zoom === this.lastZoom) return;
    this.lastZoom = zoom;
    this.send(zoomCommand(zoom));
  }
}
