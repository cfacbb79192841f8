/** Positions on the earth in degrees, and the square web Mercator world of size 1 that shows it. */

/** The latitude at which the square web Mercator world ends, degrees. */
export const MAX_LATITUDE = 85.0511287798066;

/** @param {number} latitude degrees @returns {number} the nearest latitude that the map can show */
export function clampLatitude(latitude) {
  return Math.max(-MAX_LATITUDE, Math.min(MAX_LATITUDE, latitude));
}

/** @param {number} longitude degrees, any turn @returns {number} the same meridian in −180..180 */
export function wrapLongitude(longitude) {
  if (longitude >= -180 && longitude <= 180) return longitude;
  return ((((longitude + 180) % 360) + 360) % 360) - 180;
}

/** @param {number} longitude degrees @returns {number} 0..1 from −180° to 180°; a turn more is 1 more */
export function worldX(longitude) {
  return longitude / 360 + 0.5;
}

/** @param {number} latitude degrees @returns {number} 0..1 from the north edge of the world to its south edge */
export function worldY(latitude) {
  const angle = (clampLatitude(latitude) * Math.PI) / 180;
  return 0.5 - Math.asinh(Math.tan(angle)) / (2 * Math.PI);
}
