/* global L */
/** The online map that a station may be set to show in place of the drawn one. As shipped there is none. */

const MAX_ZOOM = 22;
/** Beyond this most servers have nothing; the last tiles are enlarged. */
const MAX_NATIVE_ZOOM = 19;

export class OnlineMap {
  /** @param {L.Map} map @param {{setOnline: function(string): void}} credits */
  constructor(map, credits) {
    this.map = map;
    this.credits = credits;
    this.layer = null;
    this.wanted = true;
    this.visible = true;
  }

  /** @param {{url: string, attribution: string}|null} source as the station's settings have it */
  set(source) {
    if (!source) return;
    this.attribution = source.attribution;
    this.layer = L.tileLayer(source.url, {
      pane: 'online',
      maxZoom: MAX_ZOOM,
      maxNativeZoom: MAX_NATIVE_ZOOM,
    });
    this.update();
  }

  /** The map type has room for it. */
  setWanted(wanted) {
    this.wanted = wanted;
    this.update();
  }

  setVisible(visible) {
    this.visible = visible;
    this.update();
  }

  update() {
    if (!this.layer) return;
    const shown = this.wanted && this.visible;
    if (shown) this.layer.addTo(this.map);
    else this.layer.remove();
    this.credits.setOnline(shown ? this.attribution : '');
  }
}
