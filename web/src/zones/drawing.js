/** A zone's outline while it is drawn or changed: from the client's wish to the shape that goes back. */
import { worldX, worldY } from '../base/earth.js';
import { zoneCancelCommand, zoneClosableCommand, zoneShapeCommand } from '../bridge/commands.js';
import { crossesItself, judgeShape, LEAST_CORNERS, MOST_CORNERS } from './shape_rules.js';
import { SnapIndex } from './snap_index.js';
import { drawnStyle } from './zone_styles.js';

/** Corners of other zones hold on to what comes this near, pixels. */
const SNAP_REACH = 8;
const WORLD_SIZE = 256;
/** The look at a changed outline waits until the hand rests, milliseconds. */
const REST_MS = 250;

const PROBLEM = 'zone problem';
const CROSSING = 'zone crossing';
const IS_CROSSING =
  'The outline crosses itself. It can be saved so; a part that it goes around twice counts as outside.';
const IS_FULL = `A zone can have ${MOST_CORNERS} corners at most.`;
const IS_UNKNOWN = 'The page has no such zone to edit.';
const IS_UNREADABLE = 'The outline of this zone could not be read. Draw it anew, or finish to keep it.';
const HELP = {
  placing: 'Click to set corners. Click the first or the last one to close the outline.',
  moving: 'Drag corners to move them, the dots between to add some. Dropped on its neighbour, a corner goes.',
  hidden: ' Zoom in for more handles.',
};

export class ZoneDrawing {
  /**
   * @param {{map: L.Map, zones: import('./zone_layer.js').ZoneLayer, notices:
   *     import('../controls/notices.js').Notices, send: function(string): void}} parts
   * @param {import('./drawing_tools.js')} tools what corners are drawn with
   */
  constructor({ map, zones, notices, send }, tools) {
    this.map = map;
    this.tools = tools;
    this.zones = zones;
    this.notices = notices;
    this.send = send;
    this.editor = null;
  }

  startNew() {
    this.start(null, []);
  }

  /** @param {number} ordinal of the client's list */
  startEdit(ordinal) {
    const zone = this.zones.list.zones[ordinal];
    if (!zone) {
      this.end();
      this.notices.show(PROBLEM, IS_UNKNOWN);
      return this.send(zoneCancelCommand());
    }
    this.start(ordinal, zone.vertices);
    if (!zone.isReadable) this.notices.show(PROBLEM, IS_UNREADABLE);
  }

  start(ordinal, corners) {
    this.end();
    this.ordinal = ordinal;
    this.wasSent = false;
    this.isStarted = false;
    this.isCrossing = false;
    this.saidClosable = ordinal !== null;
    this.snapIndex = new SnapIndex(this.zones.list.cornersBut(ordinal));
    this.zones.hideOriginal(ordinal);
    this.map.doubleClickZoom.disable();
    const act = { undo: () => this.undo(), finish: () => this.finish(), cancel: () => this.cancel() };
    this.bar = new this.tools.DrawingBar(act).addTo(this.map);
    this.editor = new this.tools.ShapeEditor(this.map, {
      snap: (latlng) => this.snap(latlng),
      changed: () => this.changed(),
      full: () => this.notices.show(PROBLEM, IS_FULL),
    });
    this.editor.start(corners, drawnStyle(this.zones.list.zones[ordinal] ?? null, this.zones.isDark));
    this.keys = new this.tools.KeyDrawing(this.map, this.editor);
    this.map.on('moveend', this.onMoveEnd, this);
    this.isStarted = true;
    this.changed();
  }

  /** Nothing is drawn any more; the map is as it was before. */
  end() {
    if (!this.editor) return;
    this.isStarted = false;
    clearTimeout(this.restTimer);
    this.map.off('moveend', this.onMoveEnd, this);
    this.keys.stop();
    this.editor.stop();
    this.editor = null;
    this.bar.remove();
    this.map.doubleClickZoom.enable();
    this.notices.hide(PROBLEM);
    this.notices.hide(CROSSING);
    this.zones.hideOriginal(null);
  }

  /** The client wants the shape. */
  finish() {
    if (!this.editor) return this.cancel();
    if (this.keys.carried) this.keys.letGo();
    const isChanged = this.editor.history.isChanged;
    const verdict = judgeShape(this.editor.corners, { isEdit: this.ordinal !== null, isChanged });
    if (verdict.refusal) return this.notices.show(PROBLEM, verdict.refusal);
    this.notices.hide(PROBLEM);
    this.wasSent = true;
    this.send(zoneShapeCommand(verdict.corners));
  }

  /** Also with nothing to cancel the client hears of it: it may believe that a shape is drawn. */
  cancel() {
    this.end();
    this.send(zoneCancelCommand());
  }

  undo() {
    if (!this.editor || this.keys.putBack()) return;
    this.editor.undo();
  }

  moveCrosshair(move) {
    if (this.editor) this.keys.move(move);
  }

  /** @param {boolean} isFree no corner of another zone attracts */
  enter(isFree) {
    if (this.editor && !this.keys.enter(isFree)) this.finish();
  }

  /**
   * The client sends its list anew: a shape that it was given is saved. One that it refused it answers with no
   * list, and the drawing goes on.
   */
  listCleared() {
    if (this.wasSent) this.end();
    else if (this.editor) this.zones.hideOriginal(this.ordinal);
  }

  snap(latlng) {
    const reach = SNAP_REACH / (WORLD_SIZE * 2 ** this.map.getZoom());
    const corner = this.snapIndex.nearest(latlng.lat, latlng.lng, reach);
    return corner ? { lat: corner.latitude, lng: corner.longitude } : latlng;
  }

  /** A walk around the world, after which the map goes on in another turn: the shape comes along. */
  onMoveEnd() {
    if (this.editor.ring.length > 0) {
      const [{ lng }] = this.editor.ring;
      const turns = Math.round((this.map.getCenter().lng - lng) / 360);
      if (turns !== 0) this.editor.turn(turns);
    }
    this.showState();
  }

  changed() {
    if (!this.isStarted) return;
    this.showState();
    if (!this.saidClosable && this.editor.ring.length >= LEAST_CORNERS) {
      this.saidClosable = true;
      this.send(zoneClosableCommand());
    }
    clearTimeout(this.restTimer);
    this.restTimer = setTimeout(() => this.warnOfCrossing(), REST_MS);
  }

  showState() {
    const { ring, isPlacing, history, hasHiddenHandles } = this.editor;
    const help = (isPlacing ? HELP.placing : HELP.moving) + (hasHiddenHandles ? HELP.hidden : '');
    const count = ring.length === 1 ? '1 corner' : `${ring.length} corners`;
    this.bar.show({
      title: `${this.ordinal === null ? 'New zone' : 'Zone'}: ${count}`,
      help,
      canUndo: !history.isEmpty,
      canFinish: ring.length >= LEAST_CORNERS || (this.ordinal !== null && !history.isChanged),
    });
  }

  warnOfCrossing() {
    const crosses = crossesItself(this.editor.ring.map(({ lat, lng }) => [worldX(lng), worldY(lat)]));
    if (crosses === this.isCrossing) return;
    this.isCrossing = crosses;
    if (crosses) this.notices.show(CROSSING, IS_CROSSING);
    else this.notices.hide(CROSSING);
  }
}
