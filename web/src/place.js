/** What lies at a place, as a text for people. */

function side(degrees, positive, negative) {
  return `${Math.abs(degrees).toFixed(5)} ${degrees < 0 ? negative : positive}`;
}

/**
 * @param {number} latitude degrees @param {number} longitude degrees
 * @returns {Promise<string>} "40.62590 N, 75.37030 W"; a promise, since names will be looked up
 */
export async function describePlace(latitude, longitude) {
  return `${side(latitude, 'N', 'S')}, ${side(longitude, 'E', 'W')}`;
}
