/** Positions as texts for people. */

function side(degrees, positive, negative) {
  return `${Math.abs(degrees).toFixed(5)} ${degrees < 0 ? negative : positive}`;
}

/** @returns {string} a position in degrees: "40.62590 N, 75.37030 W" */
export function positionText(latitude, longitude) {
  return `${side(latitude, 'N', 'S')}, ${side(longitude, 'E', 'W')}`;
}
