/** Tells the client what the pointer does on the map. */
import { clampLatitude, MAX_LATITUDE, wrapLongitude } from '../base/earth.js';
import { leftClickCommand, mouseMoveCommand, plainRightClickCommand, rightClickCommand } from './commands.js';

/** At most one report of a moving pointer in this time, milliseconds. */
const MOVE_INTERVAL_MS = 50;

const NOT_THE_MAP = '.leaflet-control, .notice, .panel';

export class Pointer {
  /** @param {L.Map} map @param {function(string): void} send */
  constructor(map, send) {
    this.map = map;
    this.send = send;
    this.lastMove = null;
    this.moveTimer = null;
    /** Where the last right click was, degrees: [latitude, longitude], null before the first. */
    this.rightClicked = null;
  }

  listenToRightClicks() {
    const listen = (event) => {
      event.preventDefault();
      this.rightClick(event);
    };
    // Controls keep their clicks to themselves: only on the way down are all to be seen.
    document.addEventListener('contextmenu', listen, { capture: true });
  }

  listenToMoves() {
    this.map.on('mousemove', (event) => {
      this.lastMove = event;
      this.moveTimer ??= this.reportMove();
    });
  }

  listenToLeftClicks() {
    this.map.on('click', ({ containerPoint, latlng }) =>
      this.send(leftClickCommand(containerPoint.x, containerPoint.y, latlng.lat, latlng.lng)),
    );
  }

  /** Reports the newest position and then keeps quiet for a while; @returns the timer of that while */
  reportMove() {
    const { containerPoint, latlng } = this.lastMove;
    this.lastMove = null;
    this.send(
      mouseMoveCommand(containerPoint.x, containerPoint.y, latlng.lat, latlng.lng, this.map.getZoom()),
    );
    return setTimeout(() => {
      this.moveTimer = this.lastMove ? this.reportMove() : null;
    }, MOVE_INTERVAL_MS);
  }

  rightClick(event) {
    const place = this.placeOf(event);
    if (!place) return this.send(plainRightClickCommand());
    this.rightClicked = [clampLatitude(place.lat), wrapLongitude(place.lng)];
    // Wheel and keys zoom without a move: what the client knows of pointer and zoom may be old.
    const { x, y } = this.map.mouseEventToContainerPoint(event);
    this.send(mouseMoveCommand(x, y, ...this.rightClicked, this.map.getZoom()));
    this.send(rightClickCommand(...this.rightClicked));
  }

  /** The place under the pointer, or null on a control, beside the map and beyond the world. */
  placeOf(event) {
    const target = event.target;
    if (!this.map.getContainer().contains(target) || target.closest(NOT_THE_MAP)) return null;
    const place = this.map.mouseEventToLatLng(event);
    return Math.abs(place.lat) <= MAX_LATITUDE ? place : null;
  }
}
