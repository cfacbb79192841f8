/** Which meridians and parallels suit a view, and what is written beside them. */

/** At least this many pixels lie between two lines, but at the smallest zoom. */
const MIN_SPACING = 110;

/**
 * The smallest common step whose lines lie far enough apart.
 * @param {number} pixelsPerDegree
 * @returns {number} degrees: 90, 45, 30, 15 or 10, then 5, 2 or 1 times a power of ten
 */
export function stepFor(pixelsPerDegree) {
  const least = MIN_SPACING / pixelsPerDegree;
  if (least > 5) return [10, 15, 30, 45].find((step) => step >= least) ?? 90;
  const power = 10 ** Math.floor(Math.log10(least));
  return power * [1, 2, 5, 10].find((factor) => factor * power >= least * 0.9999999);
}

/** The multiples of step between two values, without the rounding errors of repeated addition. */
export function multiples(step, from, to) {
  const values = [];
  for (let index = Math.ceil(from / step); index * step <= to; index += 1) values.push(index * step);
  return values;
}

function decimalsFor(step) {
  return Math.max(0, -Math.floor(Math.log10(step) + 1e-9));
}

/** "40.5° N"; the equator, the zero meridian and the date line belong to no side. */
export function angleLabel(degrees, step, positive, negative) {
  const size = Math.abs(degrees).toFixed(decimalsFor(step));
  const sideless = Number(size) === 0 || Number(size) === 180;
  return `${size}°${sideless ? '' : ' ' + (degrees > 0 ? positive : negative)}`;
}
