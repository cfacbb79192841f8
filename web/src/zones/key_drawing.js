/* global L */
/** Drawing with the keyboard: a crosshair places, takes up and lets go the corners of an outline. */
import { Crosshair } from './crosshair.js';
import { LEAST_CORNERS } from './shape_rules.js';

/** What lies this near to the crosshair is meant, pixels. */
const REACH = 8;
/** The pointer takes over again when it has moved so far, pixels: the engine reports moves of its own too. */
const POINTER_MOVE = 3;

export class KeyDrawing {
  /** @param {L.Map} map @param {import('./shape_editor.js').ShapeEditor} editor */
  constructor(map, editor) {
    this.map = map;
    this.editor = editor;
    this.crosshair = new Crosshair(map);
    /** The corner that the crosshair carries: { index, from }. */
    this.carried = null;
    /** A corner was put down, and the crosshair rests where that was. */
    this.hasJustPutDown = false;
    this.pointerAt = null;
    map.on('mousemove', this.onPointer, this);
  }

  stop() {
    this.map.off('mousemove', this.onPointer, this);
    this.crosshair.remove();
  }

  onPointer({ originalEvent: { clientX, clientY } }) {
    const now = L.point(clientX, clientY);
    this.pointerAt ??= now;
    if (!this.crosshair.isShown || now.distanceTo(this.pointerAt) < POINTER_MOVE) return;
    this.pointerAt = null;
    if (!this.carried) this.crosshair.hide();
  }

  /** @param {{dx: number, dy: number}|{corner: number}} move as the client wrote it */
  move({ dx, dy, corner }) {
    this.pointerAt = null;
    this.hasJustPutDown = false;
    if (corner) this.moveToCorner(corner);
    else this.crosshair.moveBy(dx, dy);
    const place = this.editor.snapped(this.crosshair.latlng, null);
    if (this.carried) this.editor.carry(this.carried.index, place);
    else if (this.editor.isPlacing) this.editor.aimGuidesAt(place);
  }

  moveToCorner(step) {
    const ring = this.editor.ring;
    if (ring.length === 0 || this.carried) return;
    const current = this.crosshair.isShown ? this.cornerUnder() : null;
    const start = current ?? (step > 0 ? -1 : 0);
    this.crosshair.moveToPlace(ring[(start + step + ring.length) % ring.length]);
  }

  /**
   * The key for "here".
   * @param {boolean} isFree nothing is clung to
   * @returns {boolean} false when there is no crosshair, and when it comes again where a corner was just put
   *     down: the key then means that the outline is finished
   */
  enter(isFree) {
    if (!this.crosshair.isShown || this.hasJustPutDown) return false;
    if (this.carried) {
      this.letGo(isFree);
      this.hasJustPutDown = true;
    } else if (this.editor.isPlacing) this.placeOrClose(isFree);
    else this.takeUp();
    return true;
  }

  /** Puts a carried corner down. @param {boolean} isFree exactly under the crosshair */
  letGo(isFree = false) {
    const { index, from } = this.carried;
    this.carried = null;
    if (isFree) this.editor.carry(index, this.crosshair.latlng);
    this.editor.drop(index, from);
  }

  /** Puts a carried corner back where it was. @returns {boolean} whether there was one */
  putBack() {
    this.hasJustPutDown = false;
    if (!this.carried) return false;
    this.editor.carry(this.carried.index, this.carried.from);
    this.carried = null;
    return true;
  }

  placeOrClose(isFree) {
    const { ring } = this.editor;
    const isEnd = [0, ring.length - 1].includes(this.cornerUnder());
    if (ring.length >= LEAST_CORNERS && isEnd) {
      this.crosshair.hide();
      return this.editor.close();
    }
    this.editor.place(this.editor.snapped(this.crosshair.latlng, { altKey: isFree }));
  }

  takeUp() {
    const index = this.cornerUnder() ?? this.cornerOnEdge();
    if (index === null) return;
    const { lat, lng } = this.editor.ring[index];
    this.carried = { index, from: L.latLng(lat, lng) };
  }

  points() {
    return this.editor.ring.map((latlng) => this.map.latLngToContainerPoint(latlng));
  }

  /** The corner nearest to the crosshair, or null. */
  cornerUnder() {
    const distances = this.points().map((point) => point.distanceTo(this.crosshair.point));
    const nearest = distances.indexOf(Math.min(...distances));
    return nearest >= 0 && distances[nearest] <= REACH ? nearest : null;
  }

  /** A new corner on the edge under the crosshair; its index, or null where no edge is. */
  cornerOnEdge() {
    const points = this.points();
    const at = this.crosshair.point;
    const isNear = (point, index) =>
      L.LineUtil.pointToSegmentDistance(at, point, points[(index + 1) % points.length]) <= REACH;
    const edge = points.findIndex(isNear);
    if (edge < 0 || this.editor.isFull()) return null;
    this.editor.insert(edge + 1, this.crosshair.latlng);
    return edge + 1;
  }
}
