/** Reading of the texts that the client writes into the page's fields. A text of another form gives null. */

const FIT = /^(\d{2})([+-]\d{3}\.\d{6})([+-]\d{3}\.\d{6})$/;
const CENTRE = /^([+-]\d{3}\.\d{6})([+-]\d{3}\.\d{6})$/;
const GENERATION = /^[0-9A-F]{4}$/;
const LARGEST_VIEW = 16384;
const VERTEX_LENGTH = 23;
const COORDINATE = /^ *-?\d{3}\.\d{6}$/;

function position(latitudeText, longitudeText) {
  const latitude = Number(latitudeText);
  const longitude = Number(longitudeText);
  const onEarth = Math.abs(latitude) <= 90 && Math.abs(longitude) <= 180;
  return onEarth ? { latitude, longitude } : null;
}

/** "17+040.712800-074.006000" → { zoom, latitude, longitude }; the zoom may be above what a map can show. */
export function parseFit(text) {
  const parts = FIT.exec(text);
  const centre = parts && position(parts[2], parts[3]);
  return centre && { zoom: Number(parts[1]), ...centre };
}

/** "+040.712800-074.006000" → { latitude, longitude } */
export function parseCentre(text) {
  const parts = CENTRE.exec(text);
  return parts && position(parts[1], parts[2]);
}

/** A width or height in pixels: "1259" → 1259 */
export function parseViewLength(text) {
  if (!/^\d{1,5}$/.test(text)) return null;
  const length = Number(text);
  return length >= 1 && length <= LARGEST_VIEW ? length : null;
}

/** The tile generation: "002A" → "002A" */
export function parseGeneration(text) {
  return GENERATION.test(text) ? text : null;
}

/** "T" or "True" → true, "F" or "False" → false */
export function parseSwitch(text) {
  if (text === 'T' || text === 'True') return true;
  if (text === 'F' || text === 'False') return false;
  return null;
}

/**
 * One zone of the zone list: an alert flag, "T" and two numbers of 11 characters a vertex, a closing "F".
 * @returns {{alert: boolean, vertices: number[][]}|null} vertices as [latitude, longitude] in degrees
 */
export function parseZone(text) {
  const flag = text[0];
  const body = text.slice(1, -1);
  if ((flag !== 'T' && flag !== 'F') || text.length < 2 || !text.endsWith('F')) return null;
  if (body.length % VERTEX_LENGTH !== 0) return null;
  const vertices = [];
  for (let at = 0; at < body.length; at += VERTEX_LENGTH) {
    const vertex = parseVertex(body.slice(at, at + VERTEX_LENGTH));
    if (!vertex) return null;
    vertices.push(vertex);
  }
  return { alert: flag === 'T', vertices };
}

function parseVertex(text) {
  const latitude = text.slice(1, 12);
  const longitude = text.slice(12);
  if (text[0] !== 'T' || !COORDINATE.test(latitude) || !COORDINATE.test(longitude)) return null;
  const place = position(latitude, longitude);
  return place && [place.latitude, place.longitude];
}
