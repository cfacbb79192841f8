/** Finds the corner of another zone that lies nearest to a place. */
import { worldX, worldY } from '../base/earth.js';

export class SnapIndex {
  /** @param {number[][]} corners [latitude, longitude] in degrees, longitudes within −180..180 */
  constructor(corners) {
    this.corners = corners
      .map(([latitude, longitude]) => ({ latitude, longitude, x: worldX(longitude), y: worldY(latitude) }))
      .sort((a, b) => a.x - b.x);
  }

  /**
   * @param {number} latitude degrees @param {number} longitude degrees, any turn of the world
   * @param {number} reach as a part of the world's width
   * @returns {{latitude: number, longitude: number}|null} in the turn that was asked about
   */
  nearest(latitude, longitude, reach) {
    const turn = Math.floor(worldX(longitude));
    const x = worldX(longitude) - turn;
    const y = worldY(latitude);
    let best = null;
    let bestDistance = reach;
    for (let at = this.firstFrom(x - reach); at < this.corners.length; at += 1) {
      const corner = this.corners[at];
      if (corner.x > x + reach) break;
      const distance = Math.hypot(corner.x - x, corner.y - y);
      if (distance > bestDistance) continue;
      best = corner;
      bestDistance = distance;
    }
    return best && { latitude: best.latitude, longitude: best.longitude + 360 * turn };
  }

  /** The index of the first corner that is not west of x. */
  firstFrom(x) {
    let low = 0;
    let high = this.corners.length;
    while (low < high) {
      const middle = (low + high) >> 1;
      if (this.corners[middle].x < x) low = middle + 1;
      else high = middle;
    }
    return low;
  }
}
