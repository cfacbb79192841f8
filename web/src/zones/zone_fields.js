/** What the client's fields about zones do. */
import {
  parseCrosshairMove,
  parseOrdinal,
  parseSwitch,
  parseZone,
  parseZoneNames,
  whenRead,
} from '../bridge/fields.js';
import { zoneCancelCommand } from '../bridge/commands.js';

const MISSING = 'Zones can’t be drawn: a part of the page could not be loaded.';

export class ZoneFields {
  /**
   * @param {{zones: import('./zone_layer.js').ZoneLayer, notices: import('../controls/notices.js').Notices,
   *     send: function(string): void}} parts
   */
  constructor({ zones, notices, send }) {
    this.zones = zones;
    this.notices = notices;
    this.send = send;
    /** What draws zones, once it is there. */
    this.drawing = null;
    this.arrived = new Promise((resolve) => (this.tellArrived = resolve));
  }

  /** @param {import('./drawing.js').ZoneDrawing|null} drawing null when it can't be had; only the first call counts */
  setDrawing(drawing) {
    this.drawing ??= drawing;
    this.tellArrived(drawing);
  }

  /** One handler for each field; see the table in fields.js. */
  handlers() {
    const { zones } = this;
    const draw = (act) => this.draw(act);
    return {
      TxtZ: (text) => whenRead(parseSwitch(text), (visible) => zones.setVisible(visible)),
      TxtZL: (text) => this.takeList(text),
      TxtZD: (text) => zones.addNames(parseZoneNames(text)),
      TxtZN: () => draw((drawing) => drawing.startNew()),
      TxtZE: (text) =>
        whenRead(parseOrdinal(text), (ordinal) => draw((drawing) => drawing.startEdit(ordinal))),
      TxtZF: () => draw((drawing) => drawing.finish()),
      TxtZC: () => draw((drawing) => drawing.cancel()),
      TxtZU: () => draw((drawing) => drawing.undo()),
      TxtZX: (text) =>
        whenRead(parseCrosshairMove(text), (move) => draw((drawing) => drawing.moveCrosshair(move))),
      TxtZV: (text) => draw((drawing) => drawing.enter(text === 'A')),
    };
  }

  /** A zone that can't be read keeps its place: the client counts them. */
  takeList(text) {
    if (text !== '*') {
      const zone = parseZone(text);
      if (!zone) console.error('a zone holds a text of another form');
      return this.zones.add(zone);
    }
    this.zones.clear();
    this.drawing?.listCleared();
  }

  async draw(act) {
    const drawing = await this.arrived;
    if (drawing) return act(drawing);
    this.notices.show('zone drawing', MISSING);
    this.send(zoneCancelCommand());
  }
}
